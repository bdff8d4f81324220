#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::base {

/// Windows-1252 to UTF-8. Total: 81 8D 8F 90 9D, which the code page leaves open, become U+0081 and so on.
std::string FromWindows1252(std::string_view bytes);

/// UTF-8 to Windows-1252, the inverse of FromWindows1252; what the code page lacks, and malformed UTF-8,
/// becomes '?'.
std::string ToWindows1252(std::string_view text);

/// Where the first character of UTF-8 text stands for which ToWindows1252 would write a '?' of its own, in
/// bytes; nothing where there is none.
std::optional<std::size_t> FirstOutsideWindows1252(std::string_view text);
/// That character itself; empty where there is none.
std::string_view OutsideWindows1252(std::string_view text);

}  // namespace kolvane::base
