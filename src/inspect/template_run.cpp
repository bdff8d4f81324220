#include "inspect/template_run.h"

#include <algorithm>
#include <optional>

#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"
#include "inspect/byte_values.h"

namespace kolvane::inspect {

BitRange BitsFromTo(std::int16_t first, std::int16_t last) {
  constexpr std::int16_t kHighestBit = 14;
  int mask = 0;
  for (int bit = std::max<std::int16_t>(first, 0); bit <= std::min(last, kHighestBit); ++bit)
    mask |= 1 << bit;
  const auto bits = static_cast<std::int16_t>(mask);
  return {bits, last <= first ? bits : std::int16_t{1}};
}

namespace {

constexpr std::string_view kByteCount = "BYTECOUNT=";
constexpr std::string_view kString = "STRING*";

}  // namespace

std::optional<FieldLine> SplitFieldLine(std::string_view stripped) {
  FieldLine line;
  while (line.count < FieldLine::kMostFields) {
    const std::size_t end = stripped.find(';');
    line.fields[line.count++] = stripped.substr(0, end);
    if (end == std::string_view::npos) break;
    stripped.remove_prefix(end + 1);
  }
  if (line.count < 2) return std::nullopt;
  return line;
}

std::optional<std::string_view> ByteCountText(std::string_view line, std::string_view stripped) {
  if (stripped.find('=') == std::string_view::npos) return std::nullopt;
  const std::size_t keyword = base::UpperCase(stripped).find(kByteCount);
  if (keyword == std::string::npos) return std::nullopt;
  return line.substr(std::min(keyword + kByteCount.size(), line.size()));
}

std::optional<std::string_view> StringLengthText(std::string_view type) {
  const std::size_t keyword = type.find(kString);
  if (keyword == std::string_view::npos) return std::nullopt;
  return type.substr(keyword + kString.size());
}

namespace {

// A step that fails leaves its target as it was.
template <typename Value>
void Assign(Value& target, const std::optional<Value>& value) {
  if (value) target = *value;
}

void AssignNumber(std::int32_t& target, std::string_view text) {
  Assign(target, base::FitInt32(base::LeadingNumber(text)));
}

void AssignNumber(std::int16_t& target, std::string_view text) {
  Assign(target, base::FitInt16(base::LeadingNumber(text)));
}

class TemplateRun {
 public:
  TemplateRun(const NumberForm& form, DumpView& view, ByteBuffer& buffer)
      : form_(form), view_(view), buffer_(buffer) {}

  void Line(std::string_view line) {
    const std::string_view stripped = base::TrimBlanks(line);
    if (const auto count = ByteCountText(line, stripped)) {
      AssignNumber(byte_count_, *count);
      [[maybe_unused]] const bool fitted = BuildByteBuf(byte_count_, view_, buffer_);
    } else if (const auto field = SplitFieldLine(stripped)) {
      ReadPlace(*field);
      if (const auto text = ValueText(field->type())) AddLine(field->name(), *text);
    }
  }

  std::vector<std::string> TakeLines() { return std::move(lines_); }

 private:
  void ReadPlace(const FieldLine& line) {
    if (const auto offset = line.Field(2)) AssignNumber(offset_, *offset);
    has_bits_ = false;
    if (const auto first = line.Field(3)) {
      AssignNumber(first_, *first);
      if (const auto last = line.Field(4)) {
        AssignNumber(last_, *last);
      } else {
        last_ = first_;
      }
      bits_ = BitsFromTo(first_, last_);
      has_bits_ = true;
    }
  }

  std::optional<std::string> ValueText(std::string_view type) {
    if (base::EqualsNoCase(type, "BYTE")) {
      Assign(byte_, ByteAt(buffer_, offset_));
      return WholeText(byte_);
    }
    if (base::EqualsNoCase(type, "SHORT")) {
      Assign(short_, ShortAt(buffer_, offset_, form_.network_order));
      return WholeText(short_);
    }
    if (base::EqualsNoCase(type, "LONG")) {
      Assign(long_, LongAt(buffer_, offset_, form_.network_order));
      return WholeText(long_);
    }
    if (base::EqualsNoCase(type, "FLOAT")) {
      Assign(float_, FloatAt(buffer_, offset_, form_.network_order));
      return base::SingleText(float_, form_.decimal_sign);
    }
    if (base::EqualsNoCase(type, "DOUBLE")) {
      Assign(double_, DoubleAt(buffer_, offset_));
      return base::DoubleText(double_, form_.decimal_sign);
    }
    if (const auto length = StringLengthText(type)) {
      AssignNumber(string_length_, *length);
      return QuotedBytes();
    }
    return std::nullopt;
  }

  // The whole value or its bits; nothing where the range has none.
  std::optional<std::string> WholeText(std::int32_t value) const {
    if (!has_bits_) return std::to_string(value);
    if (bits_.divisor == 0) return std::nullopt;
    return base::DoubleText(static_cast<double>(value & bits_.mask) / bits_.divisor, form_.decimal_sign);
  }

  // Places outside the buffer add nothing.
  std::string QuotedBytes() const {
    const auto size = static_cast<std::int64_t>(buffer_.size());
    const std::int64_t end = std::int64_t{offset_} + string_length_;
    const auto first = static_cast<std::ptrdiff_t>(std::clamp<std::int64_t>(offset_, 0, size));
    const auto last = static_cast<std::ptrdiff_t>(std::clamp<std::int64_t>(end, first, size));
    return '"' + std::string(buffer_.begin() + first, buffer_.begin() + last) + '"';
  }

  void AddLine(std::string_view name, std::string_view text) {
    lines_.emplace_back(name).append("=").append(text);
  }

  NumberForm form_;
  DumpView& view_;
  ByteBuffer& buffer_;
  std::vector<std::string> lines_;

  // Each stays until a later line sets it anew.
  std::int32_t byte_count_ = 0;
  std::int32_t offset_ = 0;
  std::int32_t string_length_ = 0;
  std::int16_t first_ = 0;
  std::int16_t last_ = 0;
  BitRange bits_;
  bool has_bits_ = false;
  std::uint8_t byte_ = 0;
  std::int16_t short_ = 0;
  std::int32_t long_ = 0;
  float float_ = 0;
  double double_ = 0;
};

}  // namespace

std::vector<std::string> RunTemplate(std::string_view file, const NumberForm& form, DumpView& view,
                                     ByteBuffer& buffer) {
  std::string converted;
  if (file.starts_with(base::kUtf8Mark) && base::IsUtf8(file)) {
    converted = base::ToWindows1252(file.substr(base::kUtf8Mark.size()));
    file = converted;
  }
  TemplateRun run(form, view, buffer);
  while (!file.empty()) run.Line(base::TakeLine(file));
  return run.TakeLines();
}

}  // namespace kolvane::inspect
