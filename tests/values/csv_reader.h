#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::values {

using CsvRows = std::vector<std::vector<std::string>>;

/// Removes one cell from the front of `text`; nullopt if it breaks a rule.
inline std::optional<std::string> TakeCell(std::string_view& text, char separator) {
  std::string cell;
  if (!text.starts_with('"')) {
    const char ends[] = {separator, '\n'};
    cell = text.substr(0, text.find_first_of(std::string_view(ends, 2)));
    text.remove_prefix(cell.size());
    return cell.find_first_of("\"\r") == std::string::npos ? std::optional(cell) : std::nullopt;
  }
  for (text.remove_prefix(1); !text.empty(); text.remove_prefix(1)) {
    if (text.starts_with('"')) {
      text.remove_prefix(1);
      if (!text.starts_with('"')) return cell;
    }
    cell += text.front();
  }
  return std::nullopt;
}

/// Reads CSV strictly: each line ended by LF, quotes only around whole cells and doubled within, the same
/// number of cells in each line. Returns nullopt if a rule is broken.
inline std::optional<CsvRows> ReadCsv(std::string_view text, char separator) {
  CsvRows rows;
  while (!text.empty()) {
    rows.emplace_back();
    for (bool more = true; more;) {
      const auto cell = TakeCell(text, separator);
      if (!cell || text.empty()) return std::nullopt;
      rows.back().push_back(*cell);
      more = text.front() == separator;
      if (!more && text.front() != '\n') return std::nullopt;
      text.remove_prefix(1);
    }
    if (rows.back().size() != rows.front().size()) return std::nullopt;
  }
  return rows;
}

}  // namespace kolvane::values
