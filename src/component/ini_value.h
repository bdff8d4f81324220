#pragma once

#include <string>
#include <string_view>

namespace kolvane::component {

/// A text (UTF-8) as it stands after a key's '=', escaped as QSettings::IniFormat does it: one line without
/// control characters.
std::string EncodeIniValue(std::string_view text);

/// The text meant by what stands after a key's '='. Total: quotes left open end with the line, escapes that
/// nothing is known of are skipped, bytes that are not UTF-8 are taken for Windows-1252.
std::string DecodeIniValue(std::string_view value);

/// A text to be shown in a message: control characters escaped, long ones cut.
std::string ShownIniValue(std::string_view text);

}  // namespace kolvane::component
