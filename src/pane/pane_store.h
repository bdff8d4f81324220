#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pane/pane_chunk.h"

namespace kolvane::pane {

/// Bytes [begin, end) of a text.
struct PaneRange {
  std::size_t begin;
  std::size_t end;
  bool empty() const { return begin == end; }
  bool operator==(const PaneRange&) const = default;
};

/// A piece of text with its colours.
struct PanePiece {
  std::string text;
  ColorRuns colors;
};

/// The longest range of bytes [begin, end) in one colour.
struct ColorStretch {
  std::size_t begin;
  std::size_t end;
  Color color;
};

/// A coloured text of up to millions of lines, without a caret: well-formed UTF-8 in which only LF breaks
/// lines. A position is a byte offset, 0 to Length(). Appending costs the same however long the text is; an
/// edit in the middle moves one chunk's bytes.
class PaneStore {
 public:
  PaneStore();

  std::size_t Length() const { return total().bytes - 1; }
  std::size_t LineCount() const { return total().lines; }

  std::size_t LineAt(std::size_t offset) const;
  std::size_t LineStart(std::size_t line) const;
  /// The line without its break; valid until the next change.
  std::string_view Line(std::size_t line) const;
  LineOrigin Origin(std::size_t line) const;
  /// The text of [begin, end) with `line_break` for each break.
  std::string Text(std::size_t begin, std::size_t end, std::string_view line_break) const;
  PanePiece Piece(std::size_t begin, std::size_t end) const;

  /// Positions in UTF-16 units, a line break counting as one; a position inside a pair becomes the pair's.
  std::size_t ToUnits(std::size_t offset) const;
  std::size_t FromUnits(std::size_t units) const;
  /// The same with a line break counting as two (CR LF); inside a break the position before it counts.
  std::size_t ToRichUnits(std::size_t offset) const;
  std::size_t FromRichUnits(std::size_t units) const;

  Color ColorAt(std::size_t offset) const;

  /// The origin of lines inserted from now on.
  void SetOrigin(LineOrigin origin) { origin_ = origin; }

  /// Appends a break and `line`, which holds none.
  void AppendLine(std::string_view line, Color color);
  void Insert(std::size_t offset, std::string_view text, Color color);
  void Insert(std::size_t offset, const PanePiece& piece);
  void Erase(std::size_t begin, std::size_t end);
  void SetColor(std::size_t begin, std::size_t end, Color color);
  void Clear();

  std::size_t ChunkCount() const { return chunks_.size(); }
  const PaneChunk& Chunk(std::size_t chunk) const { return chunks_[chunk]; }
  /// The extent of the text before the chunk.
  const PaneExtent& ChunkStart(std::size_t chunk) const { return starts_[chunk]; }
  std::size_t ChunkOfOffset(std::size_t offset) const;
  std::size_t ChunkOfLine(std::size_t line) const;

 private:
  PaneExtent total() const;
  template <typename Measure>
  std::size_t FindChunk(std::size_t value, Measure measure) const;
  void AddChunk(std::size_t bytes, std::string_view line, Color color);
  void Edited(std::size_t chunk);
  void Split(std::size_t chunk);
  void Reindex(std::size_t from);

  std::vector<PaneChunk> chunks_;
  std::vector<PaneExtent> starts_;
  std::uint64_t version_ = 0;
  LineOrigin origin_;
};

/// The stretch around `offset`, in the colour of the character that starts there.
ColorStretch StretchAt(const PaneStore& store, std::size_t offset);

}  // namespace kolvane::pane
