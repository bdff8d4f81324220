#pragma once

#include <string>
#include <string_view>

namespace kolvane::base {

/// Appends a text cell, quoted if a reader would otherwise end it early or drop leading or trailing spaces.
void AppendCsvText(std::string_view text, char separator, std::string& out);

/// Appends the shortest decimal text that reads back as the same number.
void AppendCsvNumber(double value, char decimal_sign, std::string& out);

}  // namespace kolvane::base
