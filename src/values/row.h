#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"

namespace kolvane::values {

/// When something happened: by the wall clock, milliseconds since 1970 UTC, and by a clock that never jumps
/// back, seconds since any origin.
struct Moment {
  std::int64_t time_ms = 0;
  double seconds = 0;
};

/// A numeric answer: when it came, the command that it answers, UTF-8, and its fields, at least one.
struct Row {
  Moment moment;
  std::string_view command;
  std::span<const double> fields;
};

/// The present, with the seconds of `clock`.
Moment Now(const base::Clock& clock);

/// Makes rows of the answers that consist of numbers, for a store or a CSV file. Failed answers are none of
/// its business: nobody hands them over.
class RowMaker {
 public:
  /// The row of an answer whose every field, split at the commas, is a finite decimal number, blanks around
  /// it aside; nothing for any other. Valid until the next call, and for as long as `command` is.
  std::optional<Row> Make(Moment moment, std::string_view command, std::string_view answer);

 private:
  std::vector<double> fields_;
};

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
