#include "help/utf8.h"

#include <algorithm>

namespace kolvane::help {
namespace {

constexpr char32_t kLead[] = {0, 0xC0, 0xE0, 0xF0};  // by the number of bytes that follow

// How many bytes follow this one; -1 where none starts a character so.
int Tails(unsigned char lead) {
  if (lead < 0x80) return 0;
  if (lead < 0xC2 || lead > 0xF4) return -1;
  return lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
}

bool IsTail(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::string Utf8(char32_t point) {
  if (point < 0x80) return {static_cast<char>(point)};
  std::string out;
  const int tails = point < 0x800 ? 1 : point < 0x10000 ? 2 : 3;
  out += static_cast<char>(kLead[tails] | (point >> (6 * tails)));
  for (int i = tails - 1; i >= 0; --i) out += static_cast<char>(0x80 | ((point >> (6 * i)) & 0x3F));
  return out;
}

bool IsUtf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const int tails = Tails(static_cast<unsigned char>(bytes[0]));
    const auto length = static_cast<std::size_t>(tails + 1);
    if (tails < 0 || length > bytes.size() || !std::ranges::all_of(bytes.substr(1, length - 1), IsTail))
      return false;
    bytes.remove_prefix(length);
  }
  return true;
}

}  // namespace kolvane::help
