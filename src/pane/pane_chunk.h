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

/// The colours of a piece of text: sorted, disjoint, non-empty runs, each with a colour; neighbours of the
/// same colour are joined. Text without a colour takes no memory.
class ColorRuns {
 public:
  const std::vector<ColorRun>& runs() const { return runs_; }

  /// The colour of the byte at `at`.
  Color At(std::size_t at) const;
  /// First run that ends after `at`; runs().end() if none does.
  std::vector<ColorRun>::const_iterator FirstAfter(std::size_t at) const;

  /// Ensures that the next Append allocates nothing.
  void MakeRoomForOne() {
    if (runs_.size() == runs_.capacity()) runs_.reserve(std::max<std::size_t>(1, 2 * runs_.size()));
  }
  /// Adds a run after all others.
  void Append(std::size_t begin, std::size_t end, Color color);
  /// Inserts `size` bytes in `color` at `at`.
  void Insert(std::size_t at, std::size_t size, Color color);
  void Erase(std::size_t begin, std::size_t end);
  void Set(std::size_t begin, std::size_t end, Color color);

  /// Removes and returns the runs from `at` on, counted from there.
  ColorRuns TakeTail(std::size_t at);
  /// Appends `tail`, which starts at byte `at` here.
  void Join(const ColorRuns& tail, std::size_t at);

 private:
  std::vector<ColorRun> runs_;
};

/// An amount of text: bytes, UTF-16 units and lines, a line break counting as one of each.
struct PaneExtent {
  std::size_t bytes = 0;
  std::size_t units = 0;
  std::size_t lines = 0;
};

/// The origin of a line, packed into eight bytes, since every line has one.
class LineOrigin {
 public:
  LineOrigin() = default;
  LineOrigin(std::int64_t at_ms, bool failure) : coded_(at_ms * 2 + (failure ? 1 : 0)) {}

  /// Time in milliseconds since 1970 UTC; 0: unknown.
  std::int64_t at_ms() const { return coded_ >> 1; }
  /// Whether the line replaces an answer, or says why a command was not written.
  bool failure() const { return (coded_ & 1) != 0; }

 private:
  std::int64_t coded_ = 0;
};

/// A few hundred consecutive whole lines of the pane, each ended by LF. Offsets are bytes within the chunk,
/// line numbers start at its first line.
class PaneChunk {
 public:
  /// Changes with every edit and is unique to the chunk, so that a view can tell what it has measured.
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

  /// Reserves `bytes` in one allocation.
  void Reserve(std::size_t bytes) { text_.reserve(bytes); }
  /// Releases the memory that Reserve and growth took in advance.
  void Shrink();

  /// Appends `line`, which holds no LF. If memory runs out, nothing has changed.
  void AppendLine(std::string_view line, Color color, LineOrigin origin = {});
  /// `origin` is that of the lines that start in `text`.
  void Insert(std::size_t at, std::string_view text, Color color, LineOrigin origin = {});
  /// May include the last LF if a Join follows.
  void Erase(std::size_t begin, std::size_t end);
  void SetColor(std::size_t begin, std::size_t end, Color color) { colors_.Set(begin, end, color); }

  /// Removes and returns the lines from `line` on.
  PaneChunk TakeTail(std::size_t line);
  /// Appends `tail`; if this chunk's last LF is missing, the lines at the seam become one.
  void Join(const PaneChunk& tail);

 private:
  std::string text_;
  std::vector<std::uint32_t> starts_;
  std::vector<LineOrigin> origins_;  // by line
  ColorRuns colors_;
  std::size_t units_ = 0;
};

}  // namespace kolvane::pane
