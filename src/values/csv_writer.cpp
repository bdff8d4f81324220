#include "values/csv_writer.h"

#include "base/csv.h"

namespace kolvane::values {

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
