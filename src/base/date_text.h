#pragma once

#include <ctime>
#include <string>

namespace kolvane::base {

/// Date and time in the default form of the user's locale (LC_ALL, LC_TIME, LANG), local time, UTF-8. A
/// system without a locale of its own (C, POSIX) gets the form of the interface's language, "20.11.2026
/// 08:05:09".
std::string DateTimeText(std::time_t when);
std::string CurrentDateTimeText();

}  // namespace kolvane::base
