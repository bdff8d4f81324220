#pragma once

#include <string>
#include <string_view>

namespace kolvane::help {

/// One character, at most U+10FFFF, as UTF-8.
std::string Utf8(char32_t point);

/// Whether the bytes have the form of UTF-8 throughout.
bool IsUtf8(std::string_view bytes);

}  // namespace kolvane::help
