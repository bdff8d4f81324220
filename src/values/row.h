#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"

namespace kolvane::values {

/// A point in time: by the wall clock, milliseconds since 1970 UTC, and by a monotonic clock, seconds since
/// any origin.
struct Moment {
  std::int64_t time_ms = 0;
  double seconds = 0;
};

/// A numeric answer: its time, the command that it answers, UTF-8, and its fields, at least one.
struct Row {
  Moment moment;
  std::string_view command;
  std::span<const double> fields;
};

/// The current time, with the seconds of `clock`.
Moment Now(const base::Clock& clock);

/// Makes rows of answers that consist of numbers, for a store or a CSV file. Callers do not pass failed
/// answers.
class RowMaker {
 public:
  /// The row of an answer in which every comma-separated field is a finite decimal number, with or without
  /// spaces around it; no value for any other answer. Valid until the next call, and as long as `command` is.
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

/// Writes rows as CSV, one line each: time, command and the same number of fields in each; see
/// docs/formats/values-csv.md. Times are local.
class CsvWriter {
 public:
  CsvWriter(CsvForm form, std::size_t fields) : form_(form), fields_(fields) {}

  /// Appends the header line.
  void AppendHeader(std::string& out) const;
  /// Appends the line of a row. Missing fields are empty, those beyond the last column are left out.
  void Append(const Row& row, std::string& out);

 private:
  CsvForm form_;
  std::size_t fields_;
  base::TimeText time_;
};

}  // namespace kolvane::values
