#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kolvane::inspect {

/// How the bytes from the caret on read as one type, low byte first and high byte first.
struct ValueRow {
  std::string_view type;  ///< UTF-8, German
  std::string little_endian;
  std::string big_endian;
};

/// A row for each type, always the same ones; values for which `bytes` are too few are empty. Texts are
/// UTF-8.
std::vector<ValueRow> ValueTable(std::string_view bytes, std::string_view decimal_sign);

}  // namespace kolvane::inspect
