#pragma once

#include <QAction>
#include <QHash>
#include <QIcon>
#include <QLabel>
#include <QStyledItemDelegate>
#include <QTableView>

#include "values/ui/curves_model.h"

namespace kolvane::values {

/// Shows colours as squares that are made once: Qt would make one for each paint event and keep each of them
/// in its cache.
class ColorDelegate final : public QStyledItemDelegate {
  Q_OBJECT

 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QIcon IconOf(const QColor& color, const QSize& size) const;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  mutable QHash<QRgb, QIcon> icons_;
};

/// The list of curves `ValuesCurves` with its commands; the line above it says which rows the statistics
/// cover.
class CurvesPanel final : public QWidget {
  Q_OBJECT

 public:
  /// The model must outlive the panel.
  explicit CurvesPanel(CurvesModel& model, QWidget* parent = nullptr);

  void SetScope(const QString& text) { scope_->setText(text); }
  QTableView* table() const { return table_; }

  QSize sizeHint() const override;

 protected:
  bool eventFilter(QObject* target, QEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  QAction* AddAction(const char* name, std::string_view text, const QKeySequence& key,
                     const std::function<void()>& action);
  void BuildTable();
  void BuildActions();
  QList<int> SelectedCurves() const;
  void ToggleSelected();
  void AskColor();
  void FitColumns();

  CurvesModel& model_;
  QLabel* scope_;
  QTableView* table_;
};

}  // namespace kolvane::values
