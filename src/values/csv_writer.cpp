#include "values/csv_writer.h"

#include <algorithm>
#include <charconv>

namespace kolvane::values {

void AppendNumber(double value, char decimal_sign, std::string& out) {
  char text[32];
  char* const end = std::to_chars(text, text + sizeof text, value).ptr;
  std::replace(text, end, '.', decimal_sign);
  out.append(text, end);
}

// Quoted where a reader would end the cell too early, or take blanks at an end for none.
void AppendText(std::string_view text, char separator, std::string& out) {
  const char special[] = {separator, '"', '\r', '\n'};
  const bool bare = text.find_first_of(std::string_view(special, sizeof special)) == std::string_view::npos &&
                    !text.starts_with(' ') && !text.ends_with(' ');
  if (bare) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
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
  AppendText(row.command, form_.separator, out);
  for (std::size_t field = 0; field < fields_; ++field) {
    out += form_.separator;
    if (field < row.fields.size()) AppendNumber(row.fields[field], form_.decimal_sign, out);
  }
  out += '\n';
}

}  // namespace kolvane::values
