#include "pane/pane_moves.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "base/encoding.h"

namespace kolvane::pane {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
constexpr char32_t kJoiner = 0x200D;

std::uint8_t ByteAt(std::string_view text, std::size_t at) { return static_cast<std::uint8_t>(text[at]); }

bool InRange(char32_t value, char32_t first, char32_t last) { return value >= first && value <= last; }

bool JoinsToPrevious(char32_t value) {
  return InRange(value, 0x300, 0x36F) || InRange(value, 0x1AB0, 0x1AFF) || InRange(value, 0x1DC0, 0x1DFF) ||
         value == kJoiner || InRange(value, 0x20D0, 0x20FF) || InRange(value, 0xFE00, 0xFE0F) ||
         InRange(value, 0xFE20, 0xFE2F) || InRange(value, 0x1F3FB, 0x1F3FF);
}

std::size_t PreviousPoint(std::string_view text, std::size_t end) {
  std::size_t at = end - 1;
  while (at > 0 && base::IsUtf8Continuation(text[at])) --at;
  return at;
}

}  // namespace

bool IsPlainLine(std::string_view text) {
  return base::IsAscii(text) && text.find('\n') == text.npos && text.find('\r') == text.npos;
}

std::string ToPaneText(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const base::CodePoint next = base::DecodeUtf8(text, at);
    const bool well_formed = next.value != base::kMalformed;
    if (text[at] == '\r') {
      out += '\n';
      if (at + 1 < text.size() && text[at + 1] == '\n') ++at;
    } else {
      out.append(well_formed ? text.substr(at, next.length) : kReplacement);
    }
    at += well_formed ? next.length : 1;
  }
  return out;
}

base::CodePoint DecodeAt(std::string_view text, std::size_t at) {
  const std::uint8_t lead = ByteAt(text, at);
  const std::size_t length = base::Utf8Length(text[at]);
  if (length == 1) return {lead, 1};
  char32_t value = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) value = (value << 6) | (ByteAt(text, at + i) & 0x3Fu);
  return {value, length};
}

std::size_t Utf16Length(std::string_view text) {
  if (base::IsAscii(text)) return text.size();
  std::size_t units = 0;
  for (const char c : text) {
    units += base::IsUtf8Continuation(c) ? 0u : static_cast<std::uint8_t>(c) >= 0xF0 ? 2u : 1u;
  }
  return units;
}

std::size_t ByteOfUnit(std::string_view text, std::size_t units) {
  std::size_t at = 0;
  std::size_t passed = 0;
  while (at < text.size()) {
    const std::uint8_t lead = ByteAt(text, at);
    passed += lead >= 0xF0 ? 2u : 1u;
    if (passed > units) break;
    at += base::Utf8Length(text[at]);
  }
  return at;
}

std::size_t ClusterEnd(std::string_view text, std::size_t at) {
  if (at >= text.size()) return text.size();
  at += base::Utf8Length(text[at]);
  while (at < text.size() && ByteAt(text, at) >= 0x80) {
    const base::CodePoint next = DecodeAt(text, at);
    if (!JoinsToPrevious(next.value)) break;
    at += next.length;
    // A joiner also joins the character after it, as in a family emoji.
    if (next.value == kJoiner && at < text.size() && ByteAt(text, at) >= 0x80) {
      at += DecodeAt(text, at).length;
    }
  }
  return at;
}

std::size_t ClusterStart(std::string_view text, std::size_t end) {
  std::size_t begin = end;
  while (begin > 0) {
    begin = PreviousPoint(text, begin);
    const bool joins = ByteAt(text, begin) >= 0x80 && JoinsToPrevious(DecodeAt(text, begin).value);
    const bool joined = begin > 0 && ByteAt(text, begin) >= 0x80 &&
                        DecodeAt(text, PreviousPoint(text, begin)).value == kJoiner;
    if (!joins && !joined) break;
  }
  return begin;
}

namespace {

enum class Kind { kSpace, kSign, kWord };

Kind KindAt(std::string_view line, std::size_t at) {
  const auto byte = static_cast<std::uint8_t>(line[at]);
  if (byte == ' ' || byte == '\t') return Kind::kSpace;
  const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  const bool digit = byte >= '0' && byte <= '9';
  return letter || digit || byte == '_' || byte >= 0x80 ? Kind::kWord : Kind::kSign;
}

std::size_t EndOfKind(std::string_view line, std::size_t at, Kind kind) {
  while (at < line.size() && KindAt(line, at) == kind) ++at;
  return at;
}

std::size_t StartOfKind(std::string_view line, std::size_t at, Kind kind) {
  while (at > 0 && KindAt(line, at - 1) == kind) --at;
  return at;
}

struct LinePosition {
  std::size_t start;
  std::string_view line;
  std::size_t column;
};

LinePosition PositionOf(const PaneStore& store, std::size_t offset) {
  const std::size_t line = store.LineAt(offset);
  const std::size_t start = store.LineStart(line);
  return {start, store.Line(line), offset - start};
}

}  // namespace

std::size_t NextCharacter(const PaneStore& store, std::size_t offset) {
  const LinePosition position = PositionOf(store, offset);
  if (position.column == position.line.size()) return std::min(offset + 1, store.Length());
  return position.start + ClusterEnd(position.line, position.column);
}

std::size_t PreviousCharacter(const PaneStore& store, std::size_t offset) {
  const LinePosition position = PositionOf(store, offset);
  if (position.column == 0) return offset > 0 ? offset - 1 : 0;
  return position.start + ClusterStart(position.line, position.column);
}

std::size_t NextWord(const PaneStore& store, std::size_t offset) {
  const LinePosition position = PositionOf(store, offset);
  if (position.column == position.line.size()) return std::min(offset + 1, store.Length());
  const std::size_t end = EndOfKind(position.line, position.column, KindAt(position.line, position.column));
  return position.start + EndOfKind(position.line, end, Kind::kSpace);
}

std::size_t PreviousWord(const PaneStore& store, std::size_t offset) {
  const LinePosition position = PositionOf(store, offset);
  if (position.column == 0) return offset > 0 ? offset - 1 : 0;
  const std::size_t end = StartOfKind(position.line, position.column, Kind::kSpace);
  if (end == 0) return position.start;
  return position.start + StartOfKind(position.line, end, KindAt(position.line, end - 1));
}

PaneRange WordAround(const PaneStore& store, std::size_t offset) {
  const LinePosition position = PositionOf(store, offset);
  if (position.line.empty()) return {offset, offset};
  const std::size_t at = std::min(position.column, position.line.size() - 1);
  const Kind kind = KindAt(position.line, at);
  return {position.start + StartOfKind(position.line, at, kind),
          position.start + EndOfKind(position.line, at, kind)};
}

PaneRange LineAround(const PaneStore& store, std::size_t offset) {
  const LinePosition position = PositionOf(store, offset);
  return {position.start, std::min(position.start + position.line.size() + 1, store.Length())};
}

}  // namespace kolvane::pane
