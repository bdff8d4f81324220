#pragma once

#include <QLineEdit>
#include <QStyledItemDelegate>
#include <functional>
#include <vector>

#include "pane/matcher.h"
#include "script/command_list.h"

namespace kolvane::script {

/// What a search has found in a row.
struct RowHit {
  pane::PaneRange range;
  bool current = false;
};
using RowHits = std::vector<RowHit>;
using RowHitsOf = std::function<RowHits(int row)>;

/// Shows and edits the rows of the grid. The colours of a running or wrong row are seen through a selection,
/// which is grey where the list has no focus; what Windows-1252 lacks is underlined, while it is typed too.
class RowDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  /// Whose hits are highlighted; empty: none.
  void ShowHits(RowHitsOf hits) { hits_ = std::move(hits); }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  /// A tool tip is for what cannot be seen: a row that is wider than its column, a character's trouble.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 Q_SIGNALS:
  /// Several lines stand in the editor, which can show only one.
  void SeveralLines() const;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void LookAt(QLineEdit* editor) const;
  void AddCompletion(QLineEdit* editor, const CommandList& list) const;
  void PaintHits(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

  RowHitsOf hits_;
};

}  // namespace kolvane::script
