#include "base/csv.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace kolvane::base {

void AppendCsvNumber(double value, char decimal_sign, std::string& out) {
  char text[32];
  // The sign of a NaN has no meaning.
  if (std::isnan(value)) value = std::abs(value);
  char* const end = std::to_chars(text, text + sizeof text, value).ptr;
  std::replace(text, end, '.', decimal_sign);
  out.append(text, end);
}

void AppendCsvText(std::string_view text, char separator, std::string& out) {
  const char special[] = {separator, '"', '\r', '\n'};
  const bool bare = text.find_first_of(std::string_view(special, sizeof special)) == std::string_view::npos &&
                    !text.starts_with(' ') && !text.ends_with(' ');
  if (bare) {
    out += text;
    return;
  }
  out += '"';
  for (const char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

}  // namespace kolvane::base
