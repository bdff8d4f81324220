#include "app/shell_typing.h"

#include <algorithm>

#include "base/encoding.h"

namespace kolvane::app {
namespace {

constexpr char kCtrlC = '\x03';
constexpr char kEscape = '\x1B';

}  // namespace

bool HasGivenUp(std::string_view typed) {
  if (typed.find(kCtrlC) != typed.npos) return true;
  for (std::size_t at = typed.find(kEscape); at != typed.npos; at = typed.find(kEscape, at + 1)) {
    // Keys without a character, and those with Alt, send more with it.
    if (at + 1 == typed.size() || static_cast<unsigned char>(typed[at + 1]) <= ' ') return true;
  }
  return false;
}

std::string CommonBegin(const std::vector<std::string>& candidates) {
  if (candidates.empty()) return {};
  std::string_view common = candidates.front();
  for (const std::string& each : candidates) {
    const auto differs = std::ranges::mismatch(common, each);
    common = common.substr(0, static_cast<std::size_t>(differs.in1 - common.begin()));
  }
  return std::string(base::Utf8Prefix(candidates.front(), common.size()));
}

}  // namespace kolvane::app
