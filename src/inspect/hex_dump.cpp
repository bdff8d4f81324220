#include "inspect/hex_dump.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "base/runtime_error.h"

namespace kolvane::inspect {
namespace {

using Line = std::array<char, kLineLength>;

constexpr char CharacterOf(std::uint8_t byte) {
  return byte >= 32 && byte <= 127 ? static_cast<char>(byte) : '.';
}

class DumpWriter {
 public:
  explicit DumpWriter(std::size_t digits) {
    dump_.reserve((digits / (2 * kBytesPerLine) + 1) * kLineLength);
    StartLine();
  }

  /// Takes a digit; the last one ends its line, wherever it is.
  void Put(char digit, bool last) {
    line_[static_cast<std::size_t>(column_++)] = digit;
    ++digits_in_group_;
    if (last || column_ >= kHexEnd) {
      EndLine();
    } else if (digits_in_group_ == 2 * kBytesPerGroup) {
      ++column_;
      digits_in_group_ = 0;
    }
  }

  std::string Take() { return std::move(dump_); }

 private:
  void StartLine() {
    line_.fill(' ');
    line_[kLineText] = '\r';
    line_[kLineText + 1] = '\n';
    WriteOffset();
    column_ = kFirstByte;
    digits_in_group_ = 0;
  }

  // Four digits, or five: from 10000 on the offset takes the position of the space.
  void WriteOffset() {
    const Position offset = lines_ * kBytesPerLine;
    if (offset > std::numeric_limits<std::int16_t>::max())
      throw base::RuntimeError(base::RuntimeError::Kind::kOverflow);
    Position at = offset < 10000 ? kOffsetWidth - 1 : kOffsetWidth;
    for (Position rest = offset; at > 0; rest /= 10)
      line_[static_cast<std::size_t>(--at)] = static_cast<char>('0' + rest % 10);
  }

  void EndLine() {
    for (Position byte = 0; byte < kBytesPerLine; ++byte) {
      const auto at = static_cast<std::size_t>(ByteColumn(byte));
      const std::uint8_t value = HexPair(line_[at], line_[at + 1]);
      line_[static_cast<std::size_t>(kCharacters + byte)] = CharacterOf(value);
    }
    dump_.append(line_.data(), line_.size());
    ++lines_;
    StartLine();
  }

  std::string dump_;
  Line line_;
  Position lines_ = 0;
  Position column_ = 0;
  Position digits_in_group_ = 0;
};

bool IsBracket(char c) { return c == '<' || c == '>'; }

// Limited to what fits into the permitted lines, because a whole pane may be selected.
std::size_t DigitsToReserve(std::string_view selected) {
  constexpr std::size_t kMaxDigits = 2 * (std::numeric_limits<std::int16_t>::max() + 1);
  return std::min(selected.size() / 2, kMaxDigits);
}

}  // namespace

std::string BuildDump(std::string_view selected) {
  DumpWriter writer(DigitsToReserve(selected));
  for (std::size_t i = 0; i + 1 < selected.size(); ++i) {
    if (!IsBracket(selected[i])) writer.Put(selected[i], i + 2 == selected.size());
  }
  return writer.Take();
}

void AppendDumpLine(std::uint64_t offset, std::string_view bytes, std::string& out) {
  const std::string number = std::to_string(offset);
  if (number.size() < 4) out.append(4 - number.size(), '0');
  out += number;
  if (number.size() != static_cast<std::size_t>(kOffsetWidth)) out += ' ';
  std::string text(static_cast<std::size_t>(kLineText - kOffsetWidth), ' ');
  for (std::size_t i = 0; i < static_cast<std::size_t>(kBytesPerLine); ++i) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = i < bytes.size() ? static_cast<std::uint8_t>(bytes[i]) : std::uint8_t{0};
    const auto column = static_cast<std::size_t>(ByteColumn(static_cast<Position>(i)) - kOffsetWidth);
    if (i < bytes.size()) {
      text[column] = kDigits[byte >> 4];
      text[column + 1] = kDigits[byte & 15];
    }
    text[static_cast<std::size_t>(kCharacters - kOffsetWidth) + i] = CharacterOf(byte);
  }
  out += text;
}

std::string DumpOfBytes(std::string_view bytes) {
  std::string dump;
  dump.reserve((bytes.size() / static_cast<std::size_t>(kBytesPerLine) + 1) *
               static_cast<std::size_t>(kLineLength));
  for (std::size_t at = 0; at < bytes.size(); at += static_cast<std::size_t>(kBytesPerLine)) {
    AppendDumpLine(at, bytes.substr(at, static_cast<std::size_t>(kBytesPerLine)), dump);
    dump += "\r\n";
  }
  return dump;
}

std::string BytesOf(std::string_view dump) {
  std::string bytes;
  for (std::size_t line = 0; line + 1 < dump.size(); line += static_cast<std::size_t>(kLineLength)) {
    for (Position byte = 0; byte < kBytesPerLine; ++byte) {
      const std::size_t at = line + static_cast<std::size_t>(ByteColumn(byte));
      // Only the last line may end early; a space further left was selected as a digit.
      if (dump.substr(at, line + static_cast<std::size_t>(kHexEnd) - at).find_first_not_of(' ') ==
          std::string_view::npos)
        break;
      bytes += static_cast<char>(HexPair(dump[at], dump[at + 1]));
    }
  }
  return bytes;
}

std::size_t ByteAtPosition(Position position) {
  const Position column = ColumnOf(position);
  Position byte = 0;
  while (byte + 1 < kBytesPerLine && ByteColumn(byte + 1) <= column) ++byte;
  return static_cast<std::size_t>(position / kLineLength * kBytesPerLine + byte);
}

BoxPositions::BoxPositions(std::string_view dump) {
  for (std::size_t at = dump.find("\r\n"); at != std::string_view::npos; at = dump.find("\r\n", at + 2))
    line_feeds_.push_back(static_cast<Position>(at + 1));
}

Position BoxPositions::ToBox(Position position) const {
  const auto next = std::lower_bound(line_feeds_.begin(), line_feeds_.end(), position);
  return position - (next - line_feeds_.begin());
}

Position BoxPositions::FromBox(Position position) const {
  // A line feed shares its position in the box with the character after it: its own minus those before it.
  Position before = 0;
  Position after = static_cast<Position>(line_feeds_.size());
  while (before < after) {
    const Position middle = before + (after - before) / 2;
    if (line_feeds_[static_cast<std::size_t>(middle)] - middle <= position) {
      before = middle + 1;
    } else {
      after = middle;
    }
  }
  return position + before;
}

void EnsureValidCaretPos(DumpView& view) {
  const Position column = ColumnOf(view.caret);
  if (column < kOffsetWidth - 1) {
    view.MoveTo(view.caret + kFirstByte - column);
  } else if (column >= kHexEnd) {
    view.MoveTo(view.caret + (kLineText - column) + (kLineLength - kLineText) + kFirstByte);
  } else if (!IsByteColumn(column)) {
    view.MoveTo(view.caret + (column == kHexEnd - 1 ? -1 : 1));
  }
}

void PressKey(int key_code, DumpView& view) {
  if (key_code == key::kRight && view.caret < view.Length() - 1) {
    view.MoveTo(view.caret + 2);
  } else if (key_code == key::kLeft && view.caret >= 3) {
    view.MoveTo(view.caret - 2);
  }
}

}  // namespace kolvane::inspect
