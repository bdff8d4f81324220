#pragma once

#include <cstddef>

/// The hex dump's lines, on which all caret arithmetic relies: a decimal offset, sixteen bytes in four groups
/// of four, the bytes as characters, CR LF. Columns count from 0; every position is one byte of a
/// Windows-1252 text, CR LF two.
namespace kolvane::inspect {

using Position = std::ptrdiff_t;

inline constexpr Position kLineText = 60;    ///< without CR LF
inline constexpr Position kLineLength = 62;  ///< with it
inline constexpr Position kOffsetWidth = 5;  ///< the field and the blank behind it
inline constexpr Position kFirstByte = 5;    ///< column of the line's first digit
inline constexpr Position kHexEnd = 40;      ///< columns from here on hold no bytes
inline constexpr Position kCharacters = 44;  ///< column of the first byte as a character

inline constexpr Position kBytesPerLine = 16;
inline constexpr Position kBytesPerGroup = 4;
inline constexpr Position kGroupLength = 9;  ///< eight digits and a blank

constexpr Position ColumnOf(Position caret) { return caret % kLineLength; }

/// The column of the first digit of the line's byte 0 to 15.
constexpr Position ByteColumn(Position byte) {
  return kFirstByte + byte / kBytesPerGroup * kGroupLength + byte % kBytesPerGroup * 2;
}

/// Whether a byte's first digit stands there.
constexpr bool IsByteColumn(Position column) {
  const Position in_hex = column - kFirstByte;
  return in_hex >= 0 && column < kHexEnd && in_hex % kGroupLength % 2 == 0 &&
         in_hex % kGroupLength < 2 * kBytesPerGroup;
}

}  // namespace kolvane::inspect
