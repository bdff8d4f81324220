#include "inspect/template_records.h"

#include <algorithm>
#include <map>

#include "base/csv.h"
#include "base/encoding.h"

namespace kolvane::inspect {
namespace {

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
