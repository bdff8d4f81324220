#pragma once

#include <QLineEdit>
#include <QStyledItemDelegate>
#include <functional>
#include <vector>

#include "pane/pane_store.h"
#include "script/command_list.h"

namespace kolvane::script {

/// A search hit in a row.
struct RowHit {
  pane::PaneRange range;
  bool current = false;
};
using RowHits = std::vector<RowHit>;
using RowHitsOf = std::function<RowHits(int row)>;

/// Shows and edits the rows of the grid. The colours of a running or failed row show through a selection,
/// which is grey if the list has no focus; characters not in Windows-1252 are underlined, also while typing.
class RowDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  /// Sets the hits to highlight; empty: none.
  void ShowHits(RowHitsOf hits) { hits_ = std::move(hits); }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  /// Shows a tool tip for a row that is wider than its column, or that something is wrong with.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 Q_SIGNALS:
  /// The editor holds several lines but can show only one.
  void SeveralLines() const;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void UpdateLook(QLineEdit* editor) const;
  void AddCompletion(QLineEdit* editor, const CommandList& list) const;
  void PaintHits(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

  RowHitsOf hits_;
};

}  // namespace kolvane::script
