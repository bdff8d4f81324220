#pragma once

#include <cstdint>
#include <string>

#include "base/clock.h"
#include "values/row.h"

namespace kolvane::values {

/// The two forms of a CSV file.
struct CsvForm {
  char separator;
  char decimal_sign;  ///< of numbers and of the seconds of times
};
inline constexpr CsvForm kCommaForm{',', '.'};
inline constexpr CsvForm kSemicolonForm{';', ','};

/// Writes rows as CSV, a line at a time: time, command and the same number of fields in each, docs/formats/
/// values-csv.md. Times are local ones.
class CsvWriter {
 public:
  CsvWriter(CsvForm form, std::size_t fields) : form_(form), fields_(fields) {}

  /// Appends the line that names the columns.
  void AppendHeader(std::string& out) const;
  /// Appends the line of a row. Fields that the row lacks stay empty, those beyond the last column are left
  /// out.
  void Append(const Row& row, std::string& out);

 private:
  CsvForm form_;
  std::size_t fields_;
  base::TimeText time_;
};

}  // namespace kolvane::values
