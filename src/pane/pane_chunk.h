#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/look.h"

namespace kolvane::pane {

using base::Color;
using base::kNoColor;

/// Bytes [begin, end) in one colour.
struct ColorRun {
  std::uint32_t begin;
  std::uint32_t end;
  Color color;
};

/// The colours of a piece of text: sorted, disjoint runs, none of them empty or without colour, neighbours of
/// the same colour joined. Text without a colour of its own costs nothing.
class ColorRuns {
 public:
  const std::vector<ColorRun>& runs() const { return runs_; }

  /// The colour of the byte at `at`.
  Color At(std::size_t at) const;
  /// First run that ends after `at`; runs().end() if none does.
  std::vector<ColorRun>::const_iterator FirstAfter(std::size_t at) const;

  /// The next Append allocates nothing.
  void MakeRoomForOne() {
    if (runs_.size() == runs_.capacity()) runs_.reserve(std::max<std::size_t>(1, 2 * runs_.size()));
  }
  /// A run after all others.
  void Append(std::size_t begin, std::size_t end, Color color);
  /// Makes room for `size` bytes at `at`, in `color`.
  void Insert(std::size_t at, std::size_t size, Color color);
  void Erase(std::size_t begin, std::size_t end);
  void Set(std::size_t begin, std::size_t end, Color color);

  /// Takes away and returns what stands from `at` on, counted from there.
  ColorRuns TakeTail(std::size_t at);
  /// Appends `tail`, which begins at byte `at` here.
  void Join(const ColorRuns& tail, std::size_t at);

 private:
  std::vector<ColorRun> runs_;
};

/// How much text: bytes, UTF-16 units and lines, a line break counting one of each.
struct PaneExtent {
  std::size_t bytes = 0;
  std::size_t units = 0;
  std::size_t lines = 0;
};

/// Where a line comes from, in eight bytes, since there is one for each line.
class LineOrigin {
 public:
  LineOrigin() = default;
  LineOrigin(std::int64_t at_ms, bool failure) : coded_(at_ms * 2 + (failure ? 1 : 0)) {}

  /// When, milliseconds since 1970 UTC; 0: nobody knows.
  std::int64_t at_ms() const { return coded_ >> 1; }
  /// It stands in the place of an answer, or says why a command was not written.
  bool failure() const { return (coded_ & 1) != 0; }

 private:
  std::int64_t coded_ = 0;
};

/// A few hundred consecutive whole lines of the pane, each ended by LF. Offsets are bytes within the chunk,
/// lines count from its first one.
class PaneChunk {
 public:
  /// Changes with every edit and differs from every other chunk's, so that a view knows what it has measured.
  std::uint64_t version = 0;

  std::string_view text() const { return text_; }
  PaneExtent extent() const { return {text_.size(), units_, starts_.size()}; }
  const ColorRuns& colors() const { return colors_; }

  std::size_t LineAt(std::size_t offset) const;
  std::size_t LineStart(std::size_t line) const { return starts_[line]; }
  /// The line without its LF.
  std::string_view Line(std::size_t line) const;
  LineOrigin Origin(std::size_t line) const { return origins_[line]; }

  std::size_t ToUnits(std::size_t offset) const;
  std::size_t FromUnits(std::size_t units) const;

  /// Room for `bytes` in one piece.
  void Reserve(std::size_t bytes) { text_.reserve(bytes); }
  /// Gives back what Reserve and growth took in advance.
  void Shrink();

  /// A line at the end; it holds no LF. Where memory is lacking nothing has changed.
  void AppendLine(std::string_view line, Color color, LineOrigin origin = {});
  /// `origin` is that of the lines that begin in `text`.
  void Insert(std::size_t at, std::string_view text, Color color, LineOrigin origin = {});
  /// May take the last LF along if a Join follows.
  void Erase(std::size_t begin, std::size_t end);
  void SetColor(std::size_t begin, std::size_t end, Color color) { colors_.Set(begin, end, color); }

  /// Takes away and returns the lines from `line` on.
  PaneChunk TakeTail(std::size_t line);
  /// Appends `tail`; where this chunk's last LF is missing, the lines at the seam become one.
  void Join(const PaneChunk& tail);

 private:
  std::string text_;
  std::vector<std::uint32_t> starts_;
  std::vector<LineOrigin> origins_;  // by line
  ColorRuns colors_;
  std::size_t units_ = 0;
};

}  // namespace kolvane::pane
