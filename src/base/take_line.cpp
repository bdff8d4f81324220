#include "base/take_line.h"

#include <algorithm>

namespace kolvane::base {

std::string_view TakeLine(std::string_view& bytes) {
  constexpr std::string_view kLineEnd = "\r\n";
  const std::size_t end = std::min(bytes.find_first_of(kLineEnd), bytes.size());
  const std::string_view line = bytes.substr(0, end);
  bytes.remove_prefix(end);
  bytes.remove_prefix(bytes.substr(0, 2) == kLineEnd ? 2 : bytes.empty() ? 0 : 1);
  return line;
}

}  // namespace kolvane::base
