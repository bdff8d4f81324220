#include "values/row.h"

#include <cmath>

#include "base/csv.h"
#include "base/number.h"
#include "base/text.h"

namespace kolvane::values {

Moment Now(const base::Clock& clock) { return {base::WallClockMs(), clock.Seconds()}; }

std::optional<Row> RowMaker::Make(Moment moment, std::string_view command, std::string_view answer) {
  fields_.clear();
  const bool all = base::ForEachField(answer, [this](std::string_view field) {
    const auto number = base::WholeTextNumber(field);
    if (!number || !std::isfinite(*number)) return false;
    fields_.push_back(*number);
    return true;
  });
  return all ? std::optional(Row{moment, command, fields_}) : std::nullopt;
}

void CsvWriter::AppendHeader(std::string& out) const {
  out.append("time").append(1, form_.separator).append("command");
  for (std::size_t field = 1; field <= fields_; ++field)
    out.append(1, form_.separator).append("field").append(std::to_string(field));
  out += '\n';
}

void CsvWriter::Append(const Row& row, std::string& out) {
  time_.Append(row.moment.time_ms, form_.decimal_sign, out);
  out += form_.separator;
  base::AppendCsvText(row.command, form_.separator, out);
  for (std::size_t field = 0; field < fields_; ++field) {
    out += form_.separator;
    if (field < row.fields.size()) base::AppendCsvNumber(row.fields[field], form_.decimal_sign, out);
  }
  out += '\n';
}

}  // namespace kolvane::values
