#pragma once

#include <string>
#include <string_view>

namespace kolvane::base {

/// Appends a cell of text, quoted where a reader would end it too early or take spaces at an end for none.
void AppendCsvText(std::string_view text, char separator, std::string& out);

/// Appends the shortest decimal text that reads back as the same number.
void AppendCsvNumber(double value, char decimal_sign, std::string& out);

}  // namespace kolvane::base
