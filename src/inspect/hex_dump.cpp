#include "inspect/hex_dump.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

#include "base/runtime_error.h"

namespace kolvane::inspect {
namespace {

using Line = std::array<char, kLineLength>;

class DumpWriter {
 public:
  explicit DumpWriter(std::size_t digits) {
    dump_.reserve((digits / (2 * kBytesPerLine) + 1) * kLineLength);
    BeginLine();
  }

  /// Takes a digit; the last one ends its line wherever it stands.
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
  void BeginLine() {
    line_.fill(' ');
    line_[kLineText] = '\r';
    line_[kLineText + 1] = '\n';
    WriteOffset();
    column_ = kFirstByte;
    digits_in_group_ = 0;
  }

  // Four digits, or five: those of an offset from 10000 on take the place of the blank.
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
      line_[static_cast<std::size_t>(kCharacters + byte)] =
          value >= 32 && value <= 127 ? static_cast<char>(value) : '.';
    }
    dump_.append(line_.data(), line_.size());
    ++lines_;
    BeginLine();
  }

  std::string dump_;
  Line line_;
  Position lines_ = 0;
  Position column_ = 0;
  Position digits_in_group_ = 0;
};

bool IsBracket(char c) { return c == '<' || c == '>'; }

// What fits into the lines there can be; a whole pane may be marked.
std::size_t DigitsToReserve(std::string_view marked) {
  constexpr std::size_t kMostDigits = 2 * (std::numeric_limits<std::int16_t>::max() + 1);
  return std::min(marked.size() / 2, kMostDigits);
}

}  // namespace

std::string BuildDump(std::string_view marked) {
  DumpWriter writer(DigitsToReserve(marked));
  for (std::size_t i = 0; i + 1 < marked.size(); ++i) {
    if (!IsBracket(marked[i])) writer.Put(marked[i], i + 2 == marked.size());
  }
  return writer.Take();
}

}  // namespace kolvane::inspect
