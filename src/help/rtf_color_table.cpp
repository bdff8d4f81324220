#include "help/rtf_color_table.h"

#include <algorithm>
#include <utility>

namespace kolvane::help {

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
