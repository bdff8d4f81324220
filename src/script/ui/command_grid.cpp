#include "script/ui/command_grid.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>
#include <algorithm>

#include "script/list_editing.h"
#include "script/texts.h"
#include "terminal/ui/output_pane_paint.h"

namespace kolvane::script {
namespace {

// The colours of a running or wrong row are seen through a selection too.
class RowDelegate final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(Qt::BackgroundRole).isValid()) option->state &= ~QStyle::State_Selected;
  }
};

}  // namespace

CommandGrid::CommandGrid(CommandList& list, QWidget* parent)
    : QTableView(parent), model_(new CommandListModel(list, this)) {
  setObjectName(QStringLiteral("CommandScript"));
  setAccessibleName(QStringLiteral("Befehlsliste"));
  setModel(model_);
  setItemDelegate(new RowDelegate(this));
  setTabKeyNavigation(false);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::ContiguousSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  horizontalHeader()->setSectionResizeMode(CommandListModel::kMarkerColumn, QHeaderView::Fixed);
  horizontalHeader()->setSectionResizeMode(CommandListModel::kTextColumn, QHeaderView::Stretch);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setHighlightSections(false);
  setColumnWidth(CommandListModel::kMarkerColumn, 18);
  FitRows();
  connect(model_, &CommandListModel::CurrentRowMoved, this, &CommandGrid::ShowCurrentRow);
  connect(model_, &CommandListModel::FileShownAnew, this, &CommandGrid::FileShownAnew);
  ShowCurrentRow(list.current_row());
}

// An editor that went later would still hand its text to the list.
CommandGrid::~CommandGrid() { reset(); }

void CommandGrid::ShowLook(const QFont& font, Color text, const QColor& ground) {
  list().SetDefaultTextColor(text);
  setFont(font);
  QPalette colors = palette();
  colors.setColor(QPalette::Base, ground);
  // For the line in which a row is edited; the rows themselves bring their colours along.
  colors.setColor(QPalette::Text, terminal::ToQColor(text));
  setPalette(colors);
}

void CommandGrid::FitRows() { verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6); }

void CommandGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitRows();
}

// A run passes the empty rows behind the list and ends at the last one. The view shows the row before, where
// there is something to see: the one with the error, for example.
bool CommandGrid::IsBehindList(int row) const {
  return row > list().LastUsedRow() && (row >= kListRows || list().InUse());
}

void CommandGrid::ShowCurrentRow(int row) {
  const QModelIndex current = model_->IndexOf(std::clamp(row, 1, kListRows));
  // The user who has gone there sees it already.
  if (current == currentIndex()) return;
  const QScopedValueRollback<bool> guard(showing_current_, true);
  const bool behind = IsBehindList(row);
  setAutoScroll(!behind);
  setCurrentIndex(current);
  setAutoScroll(true);
  if (behind && model_->last_row_with_text() > 0) scrollTo(model_->IndexOf(model_->last_row_with_text()));
}

void CommandGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  if (!showing_current_ && !list().InUse() && current.isValid()) list().SetCurrentRow(current.row() + 1);
  // Typing and F2 edit the text, wherever in its row the user stands.
  if (current.column() == CommandListModel::kMarkerColumn)
    selectionModel()->setCurrentIndex(model_->IndexOf(current.row() + 1), QItemSelectionModel::NoUpdate);
}

CommandGrid::RowSpan CommandGrid::SelectedRows() const {
  RowSpan span{kListRows + 1, 0};
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    span.first = std::min(span.first, range.top() + 1);
    span.last = std::max(span.last, range.bottom() + 1);
  }
  return span;
}

void CommandGrid::copy() const {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0)
    QGuiApplication::clipboard()->setText(QString::fromStdString(CopyRows(list(), rows.first, rows.last)));
}

void CommandGrid::cut() {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0)
    QGuiApplication::clipboard()->setText(QString::fromStdString(CutRows(list(), rows.first, rows.last)));
}

void CommandGrid::paste() {
  const QString text = QGuiApplication::clipboard()->text();
  if (text.isEmpty() || !currentIndex().isValid()) return;
  const int left_out = PasteRows(list(), currentIndex().row() + 1, text.toStdString());
  if (left_out > 0) Q_EMIT ListFull(texts::NotPasted(left_out));
}

void CommandGrid::deleteSelection() {
  const RowSpan rows = SelectedRows();
  bool empty = true;
  for (int row = rows.first; row <= rows.last; ++row) empty = empty && list().Text(row).empty();
  if (empty) return removeRows();
  EmptyRows(list(), rows.first, rows.last);
}

void CommandGrid::removeRows() {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0 && !list().InUse()) RemoveRows(list(), rows.first, rows.last);
}

void CommandGrid::insertRow() {
  if (!currentIndex().isValid() || list().InUse()) return;
  if (!InsertRows(list(), currentIndex().row() + 1, 1)) Q_EMIT ListFull(std::string(texts::kNoRoomForARow));
}

void CommandGrid::undo() {
  const int row = list().Undo();
  if (row > 0 && !list().InUse()) setCurrentIndex(model_->IndexOf(row));
}

bool CommandGrid::EditByKey(const QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) return copy(), true;
  if (event->matches(QKeySequence::Cut)) return cut(), true;
  if (event->matches(QKeySequence::Paste)) return paste(), true;
  if (event->matches(QKeySequence::Undo)) return undo(), true;
  if (event->matches(QKeySequence::Delete)) return deleteSelection(), true;
  if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) return insertRow(), true;
  return false;
}

void CommandGrid::keyPressEvent(QKeyEvent* event) {
  if (EditByKey(event)) return event->accept();
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (enter && state() != EditingState) {
    setCurrentIndex(model_->IndexOf(std::min(currentIndex().row() + 2, kListRows)));
    return event->accept();
  }
  QTableView::keyPressEvent(event);
}

void CommandGrid::FinishEdit() {
  QWidget* editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr;
  if (editor == nullptr) return;
  commitData(editor);
  closeEditor(editor, QAbstractItemDelegate::NoHint);
}

void CommandGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  QTableView::closeEditor(editor, hint);
  // Enter has taken the text over: go on with the next row, as in any grid. A run that moves on closes the
  // editor, too, and has a row of its own to go to.
  if (hint == QAbstractItemDelegate::SubmitModelCache && !showing_current_)
    setCurrentIndex(model_->IndexOf(std::min(currentIndex().row() + 2, kListRows)));
}

void CommandGrid::focusInEvent(QFocusEvent* event) {
  if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) Q_EMIT Touched();
  QTableView::focusInEvent(event);
}

void CommandGrid::mousePressEvent(QMouseEvent* event) {
  Q_EMIT Touched();
  QTableView::mousePressEvent(event);
}

void CommandGrid::contextMenuEvent(QContextMenuEvent* event) {
  Q_EMIT Touched();
  Q_EMIT popupRequested(event->globalPos());
}

}  // namespace kolvane::script
