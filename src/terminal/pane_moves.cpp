#include "terminal/pane_moves.h"

#include <algorithm>
#include <cstdint>
#include <string_view>

#include "terminal/pane_utf8.h"

namespace kolvane::terminal {
namespace {

enum class Kind { kBlank, kSign, kWord };

Kind KindAt(std::string_view line, std::size_t at) {
  const auto byte = static_cast<std::uint8_t>(line[at]);
  if (byte == ' ' || byte == '\t') return Kind::kBlank;
  const bool letter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
  const bool digit = byte >= '0' && byte <= '9';
  return letter || digit || byte == '_' || byte >= 0x80 ? Kind::kWord : Kind::kSign;
}

std::size_t EndOfKind(std::string_view line, std::size_t at, Kind kind) {
  while (at < line.size() && KindAt(line, at) == kind) ++at;
  return at;
}

std::size_t BeginOfKind(std::string_view line, std::size_t at, Kind kind) {
  while (at > 0 && KindAt(line, at - 1) == kind) --at;
  return at;
}

struct Place {
  std::size_t start;
  std::string_view line;
  std::size_t column;
};

Place PlaceOf(const PaneStore& store, std::size_t offset) {
  const std::size_t line = store.LineAt(offset);
  const std::size_t start = store.LineStart(line);
  return {start, store.Line(line), offset - start};
}

}  // namespace

std::size_t NextCharacter(const PaneStore& store, std::size_t offset) {
  const Place place = PlaceOf(store, offset);
  if (place.column == place.line.size()) return std::min(offset + 1, store.Length());
  return place.start + ClusterEnd(place.line, place.column);
}

std::size_t PreviousCharacter(const PaneStore& store, std::size_t offset) {
  const Place place = PlaceOf(store, offset);
  if (place.column == 0) return offset > 0 ? offset - 1 : 0;
  return place.start + ClusterBegin(place.line, place.column);
}

std::size_t NextWord(const PaneStore& store, std::size_t offset) {
  const Place place = PlaceOf(store, offset);
  if (place.column == place.line.size()) return std::min(offset + 1, store.Length());
  const std::size_t end = EndOfKind(place.line, place.column, KindAt(place.line, place.column));
  return place.start + EndOfKind(place.line, end, Kind::kBlank);
}

std::size_t PreviousWord(const PaneStore& store, std::size_t offset) {
  const Place place = PlaceOf(store, offset);
  if (place.column == 0) return offset > 0 ? offset - 1 : 0;
  const std::size_t end = BeginOfKind(place.line, place.column, Kind::kBlank);
  if (end == 0) return place.start;
  return place.start + BeginOfKind(place.line, end, KindAt(place.line, end - 1));
}

PaneRange WordAround(const PaneStore& store, std::size_t offset) {
  const Place place = PlaceOf(store, offset);
  if (place.line.empty()) return {offset, offset};
  const std::size_t at = std::min(place.column, place.line.size() - 1);
  const Kind kind = KindAt(place.line, at);
  return {place.start + BeginOfKind(place.line, at, kind), place.start + EndOfKind(place.line, at, kind)};
}

PaneRange LineAround(const PaneStore& store, std::size_t offset) {
  const Place place = PlaceOf(store, offset);
  return {place.start, std::min(place.start + place.line.size() + 1, store.Length())};
}

}  // namespace kolvane::terminal
