#pragma once

#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

#include "values/store.h"

namespace kolvane::values {

inline constexpr std::int64_t kFirstTimeMs = 1795262400000;

/// Adds a row `seconds` after the first.
inline void AddAt(Store& store, double seconds, std::string_view command,
                  std::initializer_list<double> fields) {
  const std::vector<double> numbers(fields);
  store.Add({{kFirstTimeMs + static_cast<std::int64_t>(seconds * 1000), 100 + seconds}, command, numbers});
}

/// Adds a row a second after the last one.
inline void Add(Store& store, std::string_view command, std::initializer_list<double> fields) {
  AddAt(store, static_cast<double>(store.rows()), command, fields);
}

/// The rows as a reader returns them: "0 A? 1 2; 1 B? 3".
inline std::string Rows(const Store& store) {
  std::ostringstream out;
  RowReader reader(store);
  while (reader.row() < store.rows()) {
    if (reader.row() > 0) out << "; ";
    const Row row = reader.Next();
    out << row.moment.seconds << ' ' << row.command;
    for (const double field : row.fields) out << ' ' << field;
  }
  return out.str();
}

}  // namespace kolvane::values
