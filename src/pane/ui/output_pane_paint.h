#pragma once

#include <QColor>
#include <QPainter>

#include "pane/pane_search.h"
#include "pane/pane_store.h"
#include "pane/ui/output_pane_metrics.h"
#include "pane/ui/output_pane_rows.h"

namespace kolvane::pane {

/// Colours of text without its own colour, of selected text and of hits.
struct PaneColors {
  QColor text;
  QColor selected_text;
  QColor selected_background;
  QColor hit_background;
};

/// Paints rows of a pane: the backgrounds of hits and of the selection, then the text.
class OutputPanePainter {
 public:
  OutputPanePainter(QPainter& painter, const PaneStore& store, const OutputPaneMetrics& metrics,
                    const PaneColors& colors, PaneRange selection, const PaneSearch* search = nullptr)
      : painter_(painter),
        store_(store),
        metrics_(metrics),
        colors_(colors),
        selection_(selection),
        search_(search) {}

  /// `left_top` is the row's top left corner.
  void PaintRow(const PaneRow& row, QPointF left_top);

 private:
  bool IsSelected(std::size_t offset) const;
  void PaintSelection(const PaneRow& row, std::string_view text, QPointF left_top);
  void PaintHits(const PaneRow& row, std::size_t chunk, std::string_view text, QPointF left_top);
  std::size_t EndOfLook(const PaneChunk& chunk, std::size_t chunk_start, std::size_t at) const;
  qreal PaintText(std::string_view text, QPointF base, qreal x, bool bold);
  void PaintPlain(std::string_view text, QPointF at);
  void PaintCluster(std::string_view cluster, QPointF at, bool bold);

  QPainter& painter_;
  const PaneStore& store_;
  const OutputPaneMetrics& metrics_;
  const PaneColors& colors_;
  PaneRange selection_;
  const PaneSearch* search_;
};

}  // namespace kolvane::pane
