#include "help/rtf_tables.h"

#include <algorithm>
#include <utility>

#include "base/folding.h"

namespace kolvane::help {

void RtfFontTable::Apply(RtfMeaning meaning, std::int32_t parameter) {
  if (meaning != RtfMeaning::kFont) return;
  number_ = parameter;
  name_.clear();
}

void RtfFontTable::AddText(std::string_view text) {
  for (std::size_t end = text.find(';'); end != std::string_view::npos; end = text.find(';')) {
    name_ += text.substr(0, end);
    Finish();
    text.remove_prefix(end + 1);
  }
  // One byte too many is enough to know that the name is too long.
  name_ += text.substr(0, kLongestName + 1 - std::min(name_.size(), kLongestName + 1));
}

void RtfFontTable::Finish() {
  if (fonts_.size() < kMost && name_.size() <= kLongestName) fonts_[number_] = base::TrimBlanks(name_);
  name_.clear();
}

void RtfColorTable::Apply(RtfMeaning meaning, std::int32_t parameter) {
  if (meaning == RtfMeaning::kRed) SetComponent(0, parameter);
  if (meaning == RtfMeaning::kGreen) SetComponent(8, parameter);
  if (meaning == RtfMeaning::kBlue) SetComponent(16, parameter);
}

void RtfColorTable::SetComponent(unsigned shift, std::int32_t value) {
  const auto component = static_cast<std::uint32_t>(std::clamp(value, 0, 255));
  entry_ = (entry_.value_or(0) & ~(0xFFu << shift)) | component << shift;
}

void RtfColorTable::AddText(std::string_view text) {
  const auto ends = static_cast<std::size_t>(std::ranges::count(text, ';'));
  for (std::size_t i = 0; i < std::min(ends, kMost - colors_.size()); ++i)
    colors_.push_back(std::exchange(entry_, std::nullopt));
}

std::optional<std::uint32_t> RtfColorTable::At(std::int32_t index) const {
  const auto position = static_cast<std::size_t>(index);
  return index >= 0 && position < colors_.size() ? colors_[position] : std::nullopt;
}

}  // namespace kolvane::help
