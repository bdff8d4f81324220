#pragma once

#include <cstdint>
#include <vector>

#include "pane/pane_store.h"
#include "pane/ui/output_pane_metrics.h"

namespace kolvane::pane {

/// One row of the window: bytes [begin, end) of the text, without the line break.
struct PaneRow {
  std::size_t begin;
  std::size_t end;
  bool ends_line;
};

/// Which part of the text is in which row when lines wrap at a width. Keeps one count per chunk and computes
/// the rest on demand; call Sync after each change of the text, before anything else.
class OutputPaneRows {
 public:
  OutputPaneRows(const PaneStore& store, const OutputPaneMetrics& metrics)
      : store_(store), metrics_(&metrics) {}

  void SetLayout(const OutputPaneMetrics& metrics, qreal width);
  void Sync();
  /// To be called when the store holds another text, whose chunks may have the versions of the old ones.
  void Forget();

  /// The number of chunks at the last Sync.
  std::size_t ChunkCount() const { return chunks_.size(); }
  std::size_t Total() const { return total_; }
  /// The position among all rows, 0 to 1, where this part, 0 to 1, of the chunk's rows ends.
  double Share(std::size_t chunk, double part) const {
    return (static_cast<double>(chunks_[chunk].start) + part * static_cast<double>(chunks_[chunk].rows)) /
           static_cast<double>(total_);
  }
  PaneRow RowAt(std::size_t row) const;
  /// A position between two rows of a line belongs to the second.
  std::size_t RowOf(std::size_t offset) const;

 private:
  struct ChunkRows {
    std::uint64_t version = 0;
    std::size_t longest = 0;  // bytes of its longest line; kUnknown if not all of the chunk is ordinary
    std::size_t rows = 0;     // 0: not counted for this layout
    std::size_t start = 0;    // rows before the chunk
  };
  struct LinesOfChunk {
    std::uint64_t version = 0;
    std::vector<std::size_t> rows;  // rows of the chunk before each line
  };
  struct BreaksOfLine {
    std::uint64_t version = 0;
    std::size_t line = 0;
    std::vector<std::uint32_t> breaks;
  };

  void Measure(std::size_t chunk);
  std::size_t CountRows(std::size_t chunk) const;
  std::size_t RowsOfLine(std::size_t chunk, std::size_t index) const;
  bool IsPrintable(std::size_t chunk, std::string_view line) const;
  bool HasOneRowPerLine(std::size_t chunk) const;
  std::size_t RowsBefore(std::size_t chunk, std::size_t line) const;
  const std::vector<std::size_t>& LinesOf(std::size_t chunk) const;
  const std::vector<std::uint32_t>& BreaksOf(std::size_t chunk, std::size_t line) const;

  const PaneStore& store_;
  const OutputPaneMetrics* metrics_;
  qreal width_ = 0;
  std::vector<ChunkRows> chunks_;
  std::size_t total_ = 1;
  // The last ones requested: painting requests neighbours.
  mutable LinesOfChunk lines_;
  mutable BreaksOfLine breaks_;
};

}  // namespace kolvane::pane
