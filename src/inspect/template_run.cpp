#include "inspect/template_run.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <optional>

#include "base/csv.h"
#include "base/encoding.h"
#include "base/number.h"

namespace kolvane::inspect {
namespace {

// A step that fails leaves its target as it was.
template <typename Value>
void Assign(Value& target, const std::optional<Value>& value) {
  if (value) target = *value;
}

class TemplateRun {
 public:
  TemplateRun(const NumberForm& form, DumpView& view, ByteBuffer& buffer)
      : form_(form), view_(view), buffer_(buffer) {}

  void Step(const ByteCount& count) {
    [[maybe_unused]] const bool fitted = BuildByteBuf(count.bytes, view_, buffer_);
  }

  void Step(const TemplateField& field) {
    if (auto text = ValueText(field))
      lines_.push_back({field.name + '=' + std::move(*text), field.offset, field.length});
  }

  std::vector<ResultLine> TakeLines() { return std::move(lines_); }

 private:
  std::optional<std::string> ValueText(const TemplateField& field) {
    switch (field.type) {
      case FieldType::kByte:
        Assign(byte_, ByteAt(buffer_, field.offset));
        return WholeText(byte_, field.bits);
      case FieldType::kShort:
        Assign(short_, ShortAt(buffer_, field.offset, form_.network_order));
        return WholeText(short_, field.bits);
      case FieldType::kLong:
        Assign(long_, LongAt(buffer_, field.offset, form_.network_order));
        return WholeText(long_, field.bits);
      case FieldType::kFloat:
        Assign(float_, FloatAt(buffer_, field.offset, form_.network_order));
        return base::SingleText(float_, form_.decimal_sign);
      case FieldType::kDouble:
        Assign(double_, DoubleAt(buffer_, field.offset));
        return base::DoubleText(double_, form_.decimal_sign);
      case FieldType::kString:
        return QuotedBytes(field);
    }
    return std::nullopt;
  }

  // The whole value or its bits; no value if the range has no bits.
  std::optional<std::string> WholeText(std::int32_t value, const std::optional<BitRange>& bits) const {
    if (!bits) return std::to_string(value);
    if (bits->divisor == 0) return std::nullopt;
    return base::DoubleText(static_cast<double>(value & bits->mask) / bits->divisor, form_.decimal_sign);
  }

  // Positions outside the buffer add nothing.
  std::string QuotedBytes(const TemplateField& field) const {
    const auto size = static_cast<std::int64_t>(buffer_.size());
    const std::int64_t end = std::int64_t{field.offset} + field.length;
    const auto first = static_cast<std::ptrdiff_t>(std::clamp<std::int64_t>(field.offset, 0, size));
    const auto last = static_cast<std::ptrdiff_t>(std::clamp<std::int64_t>(end, first, size));
    return '"' + std::string(buffer_.begin() + first, buffer_.begin() + last) + '"';
  }

  NumberForm form_;
  DumpView& view_;
  ByteBuffer& buffer_;
  std::vector<ResultLine> lines_;

  // Each keeps its value until a later field of its type sets it.
  std::uint8_t byte_ = 0;
  std::int16_t short_ = 0;
  std::int32_t long_ = 0;
  float float_ = 0;
  double double_ = 0;
};

FieldValue WholeValue(std::int32_t value, const std::optional<BitRange>& bits) {
  if (!bits) return std::int64_t{value};
  if (bits->divisor == 0) return {};
  const double quotient = static_cast<double>(value & bits->mask) / bits->divisor;
  return std::trunc(quotient) == quotient ? FieldValue(static_cast<std::int64_t>(quotient))
                                          : FieldValue(quotient);
}

// Converted directly, the single would show digits that were never measured.
double Shortest(float value) {
  if (!std::isfinite(value)) return value;
  char text[32];
  const char* end = std::to_chars(text, text + sizeof text, value).ptr;
  double shortest = 0;
  std::from_chars(text, end, shortest);
  return shortest;
}

// The part of a record that a template reads: as much as its buffer holds.
ByteSpan Seen(std::string_view bytes) {
  const std::size_t size = std::min(bytes.size(), ByteBuffer{}.size());
  return {reinterpret_cast<const std::uint8_t*>(bytes.data()), size};
}

void AppendCell(const FieldValue& value, std::string& out) {
  if (const auto* whole = std::get_if<std::int64_t>(&value)) {
    out += std::to_string(*whole);
  } else if (const auto* number = std::get_if<double>(&value)) {
    base::AppendCsvNumber(*number, '.', out);
  } else if (const auto* text = std::get_if<std::string>(&value)) {
    base::AppendCsvText(*text, ',', out);
  }
}

}  // namespace

std::vector<ResultLine> RunTemplate(const Template& parsed, const NumberForm& form, DumpView& view,
                                    ByteBuffer& buffer) {
  TemplateRun run(form, view, buffer);
  for (const auto& step : parsed.steps) std::visit([&run](const auto& each) { run.Step(each); }, step);
  return run.TakeLines();
}

bool IsWithin(const TemplateField& field, std::size_t size) {
  const auto end = std::int64_t{field.offset} + field.length;
  return field.offset >= 0 && field.length >= 0 && end <= static_cast<std::int64_t>(size);
}

FieldValue ValueOf(const TemplateField& field, ByteSpan bytes, bool network_order) {
  if (!IsWithin(field, bytes.size())) return {};
  switch (field.type) {
    case FieldType::kByte:
      return WholeValue(*ByteAt(bytes, field.offset), field.bits);
    case FieldType::kShort:
      return WholeValue(*ShortAt(bytes, field.offset, network_order), field.bits);
    case FieldType::kLong:
      return WholeValue(*LongAt(bytes, field.offset, network_order), field.bits);
    case FieldType::kFloat:
      return Shortest(*FloatAt(bytes, field.offset, network_order));
    case FieldType::kDouble:
      return *DoubleAt(bytes, field.offset);
    case FieldType::kString:
      break;
  }
  const auto text =
      bytes.subspan(static_cast<std::size_t>(field.offset), static_cast<std::size_t>(field.length));
  return std::string(text.begin(), text.end());
}

RecordTable::RecordTable(const Template& parsed) : fields_(parsed.Fields()) {
  std::map<std::string, int> taken;
  for (const TemplateField& field : fields_) {
    const std::string name = base::FromWindows1252(field.name);
    std::string free = name;
    while (taken.contains(free)) free = name + '_' + std::to_string(++taken[name]);
    taken.emplace(free, 1);
    names_.push_back(std::move(free));
  }
}

std::vector<FieldValue> RecordTable::Values(std::string_view bytes, bool network_order) const {
  std::vector<FieldValue> values;
  for (const TemplateField& field : fields_) {
    FieldValue value = ValueOf(field, Seen(bytes), network_order);
    if (auto* text = std::get_if<std::string>(&value)) *text = base::FromWindows1252(*text);
    values.push_back(std::move(value));
  }
  return values;
}

void RecordTable::AppendCsvHeader(std::string& out) const {
  for (std::size_t i = 0; i < names_.size(); ++i) {
    if (i > 0) out += ',';
    base::AppendCsvText(names_[i], ',', out);
  }
  out += '\n';
}

void RecordTable::AppendCsvRecord(std::string_view bytes, bool network_order, std::string& out) const {
  bool first = true;
  for (const FieldValue& value : Values(bytes, network_order)) {
    if (!first) out += ',';
    first = false;
    AppendCell(value, out);
  }
  out += '\n';
}

std::vector<ResultLine> RecordLines(const Template& parsed, const NumberForm& form, std::string_view bytes) {
  const ByteSpan seen = Seen(bytes);
  ByteBuffer buffer{};
  std::ranges::copy(seen, buffer.begin());
  Template whole;
  for (TemplateField& field : parsed.Fields()) {
    if (IsWithin(field, seen.size())) whole.steps.emplace_back(std::move(field));
  }
  DumpView none;
  return RunTemplate(whole, form, none, buffer);
}

}  // namespace kolvane::inspect
