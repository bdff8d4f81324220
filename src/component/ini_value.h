#pragma once

#include <string>
#include <string_view>

namespace kolvane::component {

/// Escapes a text (UTF-8) for the value of a key as QSettings::IniFormat does: one line without control
/// characters.
std::string EncodeIniValue(std::string_view text);

/// Decodes the value of a key. Accepts any text: an unclosed quote ends with the line, unknown escapes are
/// skipped, bytes that are not UTF-8 are decoded as Windows-1252.
std::string DecodeIniValue(std::string_view value);

/// Prepares a text for a message: control characters escaped, long texts cut.
std::string ShownIniValue(std::string_view text);

}  // namespace kolvane::component
