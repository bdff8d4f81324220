#include "help/html.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "base/encoding.h"
#include "base/text.h"

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

namespace {

constexpr std::string_view kSpaces = " \t\r\n\f";
constexpr std::string_view kNone = {};
constexpr std::size_t kLongestTag = 8192;

std::string_view SkipSpaces(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kSpaces), text.size()));
  return text;
}

// Where the tag at the start of `html` ends, ignoring '>' within quotes; 0 if it does not end within the
// limit, without which a page of quotes would be read to its end again and again.
std::size_t TagEnd(std::string_view html) {
  char quote = '\0';
  for (std::size_t i = 1; i < std::min(html.size(), kLongestTag); ++i) {
    const char c = html[i];
    if (quote != '\0') {
      if (c == quote) quote = '\0';
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      return i;
    }
  }
  return 0;
}

bool StartsTag(std::string_view html) {
  if (html.size() < 2 || html[0] != '<') return false;
  return base::IsAsciiLetter(html[1]) || html[1] == '/' || html[1] == '!' || html[1] == '?';
}

HtmlPiece Tag(std::string_view inside) {
  const std::size_t end = std::min(inside.find_first_of(kSpaces), inside.size());
  return {true, inside.substr(0, end), inside.substr(end)};
}

void SkipComments(std::string_view& html) {
  while (html.starts_with("<!--")) {
    const std::size_t end = html.find("-->", 4);
    html.remove_prefix(end == std::string_view::npos ? html.size() : end + 3);
  }
}

// Takes the value at the start of `rest`, after the '='.
std::string_view TakeValue(std::string_view& rest) {
  rest = SkipSpaces(rest);
  const bool quoted = !rest.empty() && (rest[0] == '"' || rest[0] == '\'');
  const std::string_view ends = quoted ? rest.substr(0, 1) : kSpaces;
  if (quoted) rest.remove_prefix(1);
  const std::size_t end = std::min(rest.find_first_of(ends), rest.size());
  const std::string_view value = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return value;
}

// Whether the text on both sides of the tag may form one word.
bool IsInline(std::string_view name) {
  if (name.starts_with('/')) name.remove_prefix(1);
  constexpr std::string_view kInline[] = {"a",    "b",    "i",  "u",   "em", "strong",
                                          "code", "span", "tt", "sub", "sup"};
  return std::ranges::any_of(kInline, [name](std::string_view one) { return base::EqualsNoCase(one, name); });
}

void AppendCollapsed(std::string& to, std::string_view text) {
  for (const char c : text) {
    const bool space = kSpaces.find(c) != std::string_view::npos;
    if (!space) to += c;
    if (space && !to.empty() && to.back() != ' ') to += ' ';
  }
}

// Skips to the end of an element whose content is not text.
void SkipElement(std::string_view& html, std::string_view name) {
  while (const auto piece = TakePiece(html)) {
    if (piece->is_tag && piece->name.starts_with('/') && base::EqualsNoCase(piece->name.substr(1), name))
      return;
  }
}

}  // namespace

std::optional<HtmlPiece> TakePiece(std::string_view& html) {
  SkipComments(html);
  if (html.empty()) return std::nullopt;
  if (StartsTag(html)) {
    if (const std::size_t end = TagEnd(html); end > 0) {
      const HtmlPiece tag = Tag(html.substr(1, end - 1));
      html.remove_prefix(end + 1);
      return tag;
    }
  }
  const std::size_t next = std::min(html.find('<', 1), html.size());
  const HtmlPiece text{false, kNone, html.substr(0, next)};
  html.remove_prefix(next);
  return text;
}

std::string Attribute(std::string_view tag_text, std::string_view name) {
  for (std::string_view rest = SkipSpaces(tag_text); !rest.empty(); rest = SkipSpaces(rest)) {
    const std::size_t end = std::min(rest.find_first_of(" \t\r\n\f="), rest.size());
    const std::string_view attribute = rest.substr(0, end);
    rest = SkipSpaces(rest.substr(end));
    std::string_view value;
    if (rest.starts_with('=')) {
      rest.remove_prefix(1);
      value = TakeValue(rest);
    }
    if (base::EqualsNoCase(attribute, name)) return ResolveEntities(value);
  }
  return {};
}

PageText ReadPageText(std::string_view html) {
  PageText page;
  bool in_title = false;
  while (const auto piece = TakePiece(html)) {
    if (!piece->is_tag) {
      AppendCollapsed(in_title ? page.title : page.text, ResolveEntities(piece->text));
      continue;
    }
    for (const std::string_view element : {"style", "script"}) {
      if (base::EqualsNoCase(piece->name, element)) SkipElement(html, element);
    }
    if (base::EqualsNoCase(piece->name, "meta") &&
        base::EqualsNoCase(Attribute(piece->text, "name"), "keywords"))
      page.key_words = Attribute(piece->text, "content");
    if (base::EqualsNoCase(piece->name, "title")) in_title = true;
    if (base::EqualsNoCase(piece->name, "/title")) in_title = false;
    if (!IsInline(piece->name)) AppendCollapsed(page.text, " ");
  }
  page.title = std::string(base::TrimSpaces(page.title));
  page.text = std::string(base::TrimSpaces(page.text));
  return page;
}

std::string AsUtf8(std::string bytes) {
  if (bytes.starts_with(base::kUtf8Mark)) bytes.erase(0, base::kUtf8Mark.size());
  return base::IsUtf8(bytes) ? bytes : base::FromWindows1252(bytes);
}

}  // namespace kolvane::help
