#include "inspect/byte_values.h"

#include "inspect/hex_dump.h"

namespace kolvane::inspect {
namespace {

char CharacterAt(const DumpView& view, Position place) {
  return place < view.Length() ? view.text[static_cast<std::size_t>(place)] : '\0';
}

std::uint8_t ShownByteAt(const DumpView& view, Position place) {
  return HexPair(CharacterAt(view, place), CharacterAt(view, place + 1));
}

// The place of the byte after the one at `place`.
Position NextByte(Position place) {
  place += 2;
  const Position column = ColumnOf(place);
  if (column < kOffsetWidth - 1) return place + kFirstByte - column;
  if (column >= kHexEnd) return place + (kLineLength - column) + kFirstByte;
  return IsByteColumn(column) ? place : place + 1;
}

}  // namespace

bool BuildByteBuf(std::int32_t total_bytes, DumpView& view, ByteBuffer& buffer) {
  const Position start = view.caret;
  Position caret = start;
  buffer[0] = ShownByteAt(view, caret);
  std::size_t count = 1;
  while (caret <= view.Length() - kTextEnd && static_cast<std::int64_t>(count) != total_bytes) {
    caret = NextByte(caret);
    if (count == buffer.size()) {
      view.MoveTo(caret);
      return false;
    }
    buffer[count++] = ShownByteAt(view, caret);
  }
  view.Select(start, caret - start + 2);
  return true;
}

}  // namespace kolvane::inspect
