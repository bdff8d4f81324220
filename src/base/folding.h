#pragma once

#include <string>
#include <string_view>

namespace kolvane::base {

/// Comparisons without regard to case, for the letters that Windows-1252 holds (umlauts included), on UTF-8
/// texts.
bool EqualsNoCase(std::string_view a, std::string_view b);
bool ContainsNoCase(std::string_view text, std::string_view part);
std::string UpperCase(std::string_view text);

/// `text` without the blanks (character 32 alone) at both ends.
std::string_view TrimBlanks(std::string_view text);

/// `text` without the blanks at its end; costs far less than a look at each character where thousands stand
/// there.
std::string_view TrimBlanksRight(std::string_view text);

}  // namespace kolvane::base
