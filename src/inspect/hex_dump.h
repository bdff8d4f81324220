#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// The hex dump's lines, on which all caret arithmetic relies: a decimal offset, sixteen bytes in four groups
/// of four, the bytes as characters, CR LF. Columns count from 0; every position is one byte of a
/// Windows-1252 text, CR LF two.
namespace kolvane::inspect {

using Position = std::ptrdiff_t;

inline constexpr Position kLineText = 60;    ///< without CR LF
inline constexpr Position kLineLength = 62;  ///< with it
inline constexpr Position kOffsetWidth = 5;  ///< the field and the space after it
inline constexpr Position kFirstByte = 5;    ///< column of the line's first digit
inline constexpr Position kHexEnd = 40;      ///< columns from here on hold no bytes
inline constexpr Position kCharacters = 44;  ///< column of the first byte as a character

inline constexpr Position kBytesPerLine = 16;
inline constexpr Position kBytesPerGroup = 4;
inline constexpr Position kGroupLength = 9;  ///< eight digits and a space

constexpr Position ColumnOf(Position caret) { return caret % kLineLength; }

/// The column of the first digit of the line's byte 0 to 15.
constexpr Position ByteColumn(Position byte) {
  return kFirstByte + byte / kBytesPerGroup * kGroupLength + byte % kBytesPerGroup * 2;
}

/// Whether a byte's first digit is in this column.
constexpr bool IsByteColumn(Position column) {
  const Position in_hex = column - kFirstByte;
  return in_hex >= 0 && column < kHexEnd && in_hex % kGroupLength % 2 == 0 &&
         in_hex % kGroupLength < 2 * kBytesPerGroup;
}

/// The dump with the caret (the selection's start) and the selection of its text box, both within the text.
struct DumpView {
  std::string_view text;
  Position caret = 0;
  Position selected = 0;

  Position Length() const { return static_cast<Position>(text.size()); }

  /// Also removes the selection.
  void MoveTo(Position position) {
    caret = std::clamp<Position>(position, 0, Length());
    selected = 0;
  }

  void Select(Position start, Position length) {
    MoveTo(start);
    selected = std::clamp<Position>(length, 0, Length() - caret);
  }
};

/// The value of a hexadecimal digit, -1 for any other character.
constexpr int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// Reads two characters as a hexadecimal number as far as they form one, skipping a leading space: "4x", "4 "
/// and " 4" are 4, "x4" and "  " are 0.
constexpr std::uint8_t HexPair(char first, char second) {
  const int high = HexDigit(first);
  const int low = HexDigit(second);
  if (high < 0) return static_cast<std::uint8_t>(first == ' ' && low > 0 ? low : 0);
  return static_cast<std::uint8_t>(low < 0 ? high : high * 16 + low);
}

/// Lays out what is selected in the output pane, bytes as "<41>", as a hex dump. Every character except the
/// brackets counts as a digit. The last character is ignored: an incomplete line is lost unless a digit comes
/// right before it. Both texts are Windows-1252. Throws RuntimeError kOverflow beyond 2047 lines.
std::string BuildDump(std::string_view selected);

/// The most bytes that a dump holds.
inline constexpr std::size_t kMaxDumpBytes = 2047 * 16;

/// The dump of bytes, at most kMaxDumpBytes, as BuildDump lays them out.
std::string DumpOfBytes(std::string_view bytes);

/// Appends the line of at most sixteen bytes, without its line end; `offset` is that of the first byte. From
/// 100000 on the offset makes the line longer.
void AppendDumpLine(std::uint64_t offset, std::string_view bytes, std::string& out);

/// The bytes of a dump. A single digit at its end also counts as a byte.
std::string BytesOf(std::string_view dump);

/// The position of a byte's first digit.
constexpr Position PositionOfByte(std::size_t byte) {
  const auto at = static_cast<Position>(byte);
  return at / kBytesPerLine * kLineLength + ByteColumn(at % kBytesPerLine);
}

/// The byte whose digits are at `position`, otherwise the one before; 0 before the first.
std::size_t ByteAtPosition(Position position);

/// Converts between positions in the dump, where CR LF counts as two, and those of a text box that counts it
/// as one.
class BoxPositions {
 public:
  BoxPositions() = default;
  explicit BoxPositions(std::string_view dump);

  /// A position inside CR LF becomes the start of the next line.
  Position ToBox(Position position) const;
  Position FromBox(Position position) const;

 private:
  std::vector<Position> line_feeds_;  // those after a CR, as positions in the dump
};

/// Virtual key codes of the keys that move the caret.
namespace key {
inline constexpr int kLeft = 37;
inline constexpr int kRight = 39;
}  // namespace key

/// Moves the caret from the offset field or the characters to a byte's first digit. Between digits it moves
/// only one position, so from the second digit of a group's last byte to the space after it.
void EnsureValidCaretPos(DumpView& view);

/// Handles a key press in the text box: Right and Left move two positions, any other key does nothing.
void PressKey(int key_code, DumpView& view);

}  // namespace kolvane::inspect
