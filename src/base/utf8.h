#pragma once

#include <string_view>

namespace kolvane::base {

/// What may stand at the start of a file in UTF-8.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Whether the byte goes on with a character of UTF-8 that an earlier one has begun.
constexpr bool IsUtf8Continuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace kolvane::base
