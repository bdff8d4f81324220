#pragma once

#include <string>
#include <string_view>

namespace kolvane::devlnk {

/// The system's UTF-8 as the 8-bit text of the C interface: one byte a character, '?' for what is beyond and
/// for malformed UTF-8.
std::string EightBitText(std::string_view utf8);

}  // namespace kolvane::devlnk
