#pragma once

#include <string>
#include <string_view>

namespace kolvane::base {

/// Windows-1252 to UTF-8. Total: 81 8D 8F 90 9D, which the code page leaves open, become U+0081 and so on.
std::string FromWindows1252(std::string_view bytes);

/// UTF-8 to Windows-1252, the inverse of FromWindows1252; what the code page lacks, and malformed UTF-8,
/// becomes '?'.
std::string ToWindows1252(std::string_view text);

}  // namespace kolvane::base
