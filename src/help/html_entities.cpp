#include "help/html_entities.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "base/utf8.h"
#include "help/html.h"

namespace kolvane::help {
namespace {

constexpr std::size_t kLongestName = 8;

struct Entity {
  std::string_view name;
  std::uint32_t character;
};

constexpr Entity kEntities[] = {
    {"amp", '&'},      {"lt", '<'},       {"gt", '>'},       {"quot", '"'},      {"apos", '\''},
    {"nbsp", ' '},     {"auml", 0xE4},    {"ouml", 0xF6},    {"uuml", 0xFC},     {"Auml", 0xC4},
    {"Ouml", 0xD6},    {"Uuml", 0xDC},    {"szlig", 0xDF},   {"micro", 0xB5},    {"deg", 0xB0},
    {"euro", 0x20AC},  {"ndash", 0x2013}, {"mdash", 0x2014}, {"hellip", 0x2026}, {"bdquo", 0x201E},
    {"ldquo", 0x201C}, {"rdquo", 0x201D}, {"times", 0xD7},   {"rarr", 0x2192},   {"larr", 0x2190},
    {"copy", 0xA9},    {"sect", 0xA7},    {"middot", 0xB7},  {"eacute", 0xE9},
};

std::uint32_t Number(std::string_view digits) {
  const bool hex = digits.starts_with('x') || digits.starts_with('X');
  if (hex) digits.remove_prefix(1);
  std::uint32_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, hex ? 16 : 10);
  const bool valid = error == std::errc() && stop == end && value < 0x110000 && (value & 0x1FF800) != 0xD800;
  return valid ? value : 0;
}

}  // namespace

std::uint32_t EntityCharacter(std::string_view name) {
  if (name.starts_with('#')) return Number(name.substr(1));
  const auto* found = std::ranges::find(kEntities, name, &Entity::name);
  return found == std::end(kEntities) ? 0 : found->character;
}

std::string ResolveEntities(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  while (!text.empty()) {
    const std::size_t start = std::min(text.find('&'), text.size());
    out.append(text.substr(0, start));
    text.remove_prefix(start);
    if (text.empty()) break;
    const std::size_t end = text.substr(0, kLongestName + 2).find(';');
    const std::uint32_t c = end == std::string_view::npos ? 0 : EntityCharacter(text.substr(1, end - 1));
    if (c == 0) out += '&';
    if (c != 0) base::AppendUtf8(out, c);
    text.remove_prefix(c == 0 ? 1 : end + 1);
  }
  return out;
}

}  // namespace kolvane::help
