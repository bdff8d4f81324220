#include "inspect/byte_values.h"

#include <algorithm>
#include <bit>
#include <bitset>
#include <cstdint>
#include <cstring>
#include <ctime>

#include "base/encoding.h"
#include "base/number.h"
#include "inspect/hex_dump.h"
#include "inspect/texts.h"

namespace kolvane::inspect {
namespace {

char CharacterAt(const DumpView& view, Position position) {
  return position < view.Length() ? view.text[static_cast<std::size_t>(position)] : '\0';
}

std::uint8_t ShownByteAt(const DumpView& view, Position position) {
  return HexPair(CharacterAt(view, position), CharacterAt(view, position + 1));
}

// The position of the byte after the one at `position`.
Position NextByte(Position position) {
  position += 2;
  const Position column = ColumnOf(position);
  if (column < kOffsetWidth - 1) return position + kFirstByte - column;
  if (column >= kHexEnd) return position + (kLineLength - column) + kFirstByte;
  return IsByteColumn(column) ? position : position + 1;
}

constexpr std::size_t kCharactersShown = 8;
constexpr std::int64_t kFirstSecond = -62135596800;  // start of the year 1
constexpr std::int64_t kLastSecond = 253402300799;   // end of the year 9999

// The value of the bytes, low byte first.
template <typename Value>
Value ValueOf(std::string_view bytes) {
  Value value;
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

template <typename Value, typename Text>
ValueRow RowOf(std::string_view type, std::string_view bytes, Text text) {
  static_assert(std::endian::native == std::endian::little);
  if (bytes.size() < sizeof(Value)) return {type, "", ""};
  std::string turned(bytes.substr(0, sizeof(Value)));
  std::ranges::reverse(turned);
  return {type, text(ValueOf<Value>(bytes)), text(ValueOf<Value>(turned))};
}

template <typename Value>
ValueRow WholeRow(std::string_view type, std::string_view bytes) {
  return RowOf<Value>(type, bytes, [](Value value) { return std::to_string(value); });
}

std::string TimeText(std::int64_t seconds) {
  if (seconds < kFirstSecond || seconds > kLastSecond) return std::string(texts::kNoTime);
  const std::time_t time = seconds;
  std::tm utc{};
  gmtime_r(&time, &utc);
  char text[64];
  return {text, std::strftime(text, sizeof text, "%d.%m.%Y %H:%M:%S", &utc)};
}

// Bits and characters do not depend on the byte order.
ValueRow BitsRow(std::string_view bytes) {
  if (bytes.empty()) return {texts::kBits, "", ""};
  std::string bits = std::bitset<8>(static_cast<unsigned char>(bytes.front())).to_string();
  bits.insert(4, 1, ' ');
  return {texts::kBits, bits, bits};
}

ValueRow CharactersRow(std::string_view bytes) {
  std::string shown(bytes.substr(0, kCharactersShown));
  std::ranges::replace_if(
      shown, [](char c) { return static_cast<unsigned char>(c) < 32 || c == 127; }, '.');
  const std::string text = base::FromWindows1252(shown);
  return {texts::kCharacters, text, text};
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

std::vector<ValueRow> ValueTable(std::string_view bytes, std::string_view decimal_sign) {
  const auto single = [&](float value) { return base::SingleText(value, decimal_sign); };
  const auto real = [&](double value) { return base::DoubleText(value, decimal_sign); };
  const auto time32 = [](std::int32_t value) { return TimeText(value); };
  return {WholeRow<std::uint8_t>(texts::kUnsigned8, bytes),
          WholeRow<std::int8_t>(texts::kSigned8, bytes),
          WholeRow<std::uint16_t>(texts::kUnsigned16, bytes),
          WholeRow<std::int16_t>(texts::kSigned16, bytes),
          WholeRow<std::uint32_t>(texts::kUnsigned32, bytes),
          WholeRow<std::int32_t>(texts::kSigned32, bytes),
          WholeRow<std::uint64_t>(texts::kUnsigned64, bytes),
          WholeRow<std::int64_t>(texts::kSigned64, bytes),
          RowOf<float>(texts::kSingle, bytes, single),
          RowOf<double>(texts::kDouble, bytes, real),
          CharactersRow(bytes),
          BitsRow(bytes),
          RowOf<std::int32_t>(texts::kTime32, bytes, time32),
          RowOf<std::int64_t>(texts::kTime64, bytes, TimeText)};
}

}  // namespace kolvane::inspect
