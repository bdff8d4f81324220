#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "pane/pane_chunk.h"

namespace kolvane::pane {

/// A piece of text with its colours.
struct PanePiece {
  std::string text;
  ColorRuns colors;
};

/// Bytes [begin, end) of a text, all in one colour, and as many as there are.
struct ColorStretch {
  std::size_t begin;
  std::size_t end;
  Color color;
};

/// A text of millions of lines with colours, without caret or rules of its own: well-formed UTF-8 in which
/// only LF breaks lines. A position is a byte offset, 0 to Length(). Appending costs the same however long
/// the text is; an edit in the middle moves one chunk's bytes.
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

  /// Positions counted in UTF-16 units, a line break being one; a position inside a pair is the pair's.
  std::size_t ToUnits(std::size_t offset) const;
  std::size_t FromUnits(std::size_t units) const;
  /// The same, a line break being two (CR LF); a position inside a break is the one before it.
  std::size_t ToRichUnits(std::size_t offset) const;
  std::size_t FromRichUnits(std::size_t units) const;

  Color ColorAt(std::size_t offset) const;

  /// Where the lines come from that are put in from now on.
  void SetOrigin(LineOrigin origin) { origin_ = origin; }

  /// A break and `line`, which holds none, at the end.
  void AppendLine(std::string_view line, Color color);
  void Insert(std::size_t offset, std::string_view text, Color color);
  void Insert(std::size_t offset, const PanePiece& piece);
  void Erase(std::size_t begin, std::size_t end);
  void SetColor(std::size_t begin, std::size_t end, Color color);
  void Clear();

  std::size_t ChunkCount() const { return chunks_.size(); }
  const PaneChunk& Chunk(std::size_t chunk) const { return chunks_[chunk]; }
  /// What stands before the chunk.
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

/// The stretch around `offset`, the colour of the character that begins there.
ColorStretch StretchAt(const PaneStore& store, std::size_t offset);

}  // namespace kolvane::pane
