#include "script/ui/command_grid.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMimeData>
#include <QPainter>
#include <QScopedValueRollback>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "base/ui/fields.h"
#include "base/ui/qt_look.h"
#include "base/ui/qt_text.h"
#include "script/list_editing.h"
#include "script/texts.h"
#include "script/ui/cursor_model.h"
#include "script/ui/plain_header.h"

namespace kolvane::script {
namespace {

// The command file being dragged, if it is the only file.
QString DraggedFile(const QMimeData& data) {
  const QList<QUrl> files = data.urls();
  if (files.size() != 1 || !files.front().isLocalFile()) return {};
  const QString name = files.front().toLocalFile();
  return name.endsWith(QLatin1String(".CMD"), Qt::CaseInsensitive) ? name : QString();
}

// The standard key for redo differs between platforms.
bool IsControlY(const QKeyEvent* event) {
  return event->key() == Qt::Key_Y && event->modifiers() == Qt::ControlModifier;
}

}  // namespace

CommandGrid::CommandGrid(CommandList& list, QWidget* parent)
    : QTableView(parent),
      model_(new CommandListModel(list, this)),
      delegate_(new RowDelegate(this)),
      bar_(new base::MarkedScrollBar) {
  setObjectName(QStringLiteral("CommandScript"));
  setAccessibleName(QStringLiteral("Befehlsliste"));
  setVerticalHeader(new PlainHeader(Qt::Vertical, this));
  setHorizontalHeader(new PlainHeader(Qt::Horizontal, this));
  setModel(model_);
  const QItemSelectionModel* unused = selectionModel();
  setSelectionModel(new CursorModel(model_, this, [this] { ChooseCursorRow(); }));
  delete unused;
  setItemDelegate(delegate_);
  setAcceptDrops(true);
  setTabKeyNavigation(false);
  setSelectionBehavior(QAbstractItemView::SelectRows);
  setSelectionMode(QAbstractItemView::ContiguousSelection);
  setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
  setWordWrap(false);
  setVerticalScrollBar(bar_);
  SetUpHeaders();
  Connect();
  ShowCurrentRow(list.current_row());
}

void CommandGrid::SetUpHeaders() {
  verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setSectionsMovable(true);
  connect(verticalHeader(), &QHeaderView::sectionMoved, this, &CommandGrid::RowDragged);
  horizontalHeader()->setSectionResizeMode(CommandListModel::kMarkerColumn, QHeaderView::Fixed);
  horizontalHeader()->setSectionResizeMode(CommandListModel::kTextColumn, QHeaderView::Stretch);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setColumnWidth(CommandListModel::kMarkerColumn, 18);
  FitRows();
}

void CommandGrid::Connect() {
  connect(model_, &CommandListModel::CurrentRowMoved, this, &CommandGrid::ShowCurrentRow);
  connect(model_, &CommandListModel::FileShownAgain, this, &CommandGrid::FileShownAgain);
  connect(model_, &CommandListModel::dataChanged, this, &CommandGrid::DescribeState);
  // Queued, because no message can be shown during an edit.
  connect(
      model_, &CommandListModel::LinesLeftOut, this,
      [this](int count) { Q_EMIT ListFull(texts::NotPasted(count)); }, Qt::QueuedConnection);
  connect(delegate_, &RowDelegate::SeveralLines, this, &CommandGrid::FinishEdit);
}

// An editor destroyed later would still pass its text to the list.
CommandGrid::~CommandGrid() { reset(); }

void CommandGrid::ShowLook(const QFont& font, Color text, const QColor& background) {
  list().SetDefaultTextColor(text);
  setFont(font);
  QPalette colors = palette();
  colors.setColor(QPalette::Base, background);
  // For the editor of a row; the rows themselves have their own colours.
  colors.setColor(QPalette::Text, base::ToQColor(text));
  setPalette(colors);
}

void CommandGrid::ShowHits(RowHitsOf hits, const std::vector<double>& marks) {
  delegate_->ShowHits(std::move(hits));
  bar_->SetMarks(marks);
  viewport()->update();
}

void CommandGrid::FitRows() { verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6); }

void CommandGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitRows();
}

bool CommandGrid::IsPastList(int row) const {
  return row > list().LastUsedRow() && (row >= kListRows || list().InUse());
}

void CommandGrid::ShowCurrentRow(int row) {
  if (!IsPastList(row)) MoveCursor(row);
}

void CommandGrid::ShowRunEnd(int last_row) {
  model_->Flush();
  if (IsPastList(list().current_row())) MoveCursor(last_row);
  DescribeState();
}

void CommandGrid::MoveCursor(int row) {
  const QModelIndex cursor = model_->IndexOf(std::clamp(row, 1, kListRows));
  // If the user has gone there, it is in view already.
  if (cursor == currentIndex()) return;
  const QScopedValueRollback<bool> guard(showing_current_, true);
  setCurrentIndex(cursor);
}

// So that a screen reader, too, reports how far a run is and where it failed.
void CommandGrid::DescribeState() {
  const QString state = currentIndex().data(Qt::AccessibleDescriptionRole).toString();
  const QString row = base::ToQt(texts::RowName(currentIndex().row() + 1));
  const QString description = state.isEmpty() ? QString() : row + QStringLiteral(": ") + state;
  if (description != accessibleDescription()) setAccessibleDescription(description);
}

void CommandGrid::ChooseCursorRow() {
  if (!showing_current_ && !list().InUse() && currentIndex().isValid())
    list().SetCurrentRow(currentIndex().row() + 1);
}

void CommandGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  // Typing and F2 edit the text, whichever column of the row is current.
  if (current.column() == CommandListModel::kMarkerColumn)
    selectionModel()->setCurrentIndex(model_->IndexOf(current.row() + 1), QItemSelectionModel::NoUpdate);
  DescribeState();
}

CommandGrid::RowSpan CommandGrid::SelectedRows() const {
  RowSpan span{kListRows + 1, 0};
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    span.first = std::min(span.first, range.top() + 1);
    span.last = std::max(span.last, range.bottom() + 1);
  }
  return span;
}

int CommandGrid::FirstRow() const {
  const int current = currentIndex().row();
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    if (range.top() <= current && current <= range.bottom()) return range.top() + 1;
  }
  return current + 1;
}

void CommandGrid::copy() const {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0)
    QGuiApplication::clipboard()->setText(base::ToQt(CopyRows(list(), rows.first, rows.last)));
}

void CommandGrid::cut() {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0)
    QGuiApplication::clipboard()->setText(base::ToQt(CutRows(list(), rows.first, rows.last)));
}

void CommandGrid::paste() {
  const QString text = QGuiApplication::clipboard()->text();
  if (text.isEmpty() || !currentIndex().isValid()) return;
  const int left_out = PasteRows(list(), FirstRow(), base::FromQt(text));
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
  if (!InsertRows(list(), FirstRow(), 1)) Q_EMIT ListFull(std::string(texts::kNoRoomForARow));
}

void CommandGrid::insertPaste() {
  const QString text = QGuiApplication::clipboard()->text();
  if (text.isEmpty() || !currentIndex().isValid() || list().InUse()) return;
  if (!InsertLines(list(), FirstRow(), base::FromQt(text)))
    Q_EMIT ListFull(std::string(texts::kNoRoomForARow));
}

void CommandGrid::duplicateRows() {
  const RowSpan rows = SelectedRows();
  if (rows.last == 0 || list().InUse()) return;
  if (!DuplicateRows(list(), rows.first, rows.last)) {
    Q_EMIT ListFull(std::string(texts::kNoRoomForARow));
  } else {
    SelectRows(rows.last + 1, 2 * rows.last - rows.first + 1);
  }
}

void CommandGrid::moveRowsUp() {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0) MoveRowsBy(rows, -1);
}

void CommandGrid::moveRowsDown() {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0) MoveRowsBy(rows, 1);
}

void CommandGrid::MoveRowsBy(RowSpan rows, int by) {
  if (!list().InUse() && MoveRows(list(), rows.first, rows.last, by))
    SelectRows(rows.first + by, rows.last + by);
}

// Dragging a section of the header moves its row in the list instead, together with all selected rows if it
// is one of them.
void CommandGrid::RowDragged(int row, int from, int to) {
  if (from == to || dragging_) return;
  dragging_ = true;
  verticalHeader()->moveSection(to, from);
  dragging_ = false;
  FinishEdit();
  RowSpan rows = SelectedRows();
  if (row + 1 < rows.first || row + 1 > rows.last) rows = {row + 1, row + 1};
  if (to + 1 < rows.first || to + 1 > rows.last)
    MoveRowsBy(rows, to < from ? to + 1 - rows.first : to + 1 - rows.last);
}

void CommandGrid::toggleComments() {
  const RowSpan rows = SelectedRows();
  if (rows.last > 0 && !list().InUse()) ToggleComments(list(), rows.first, rows.last);
}

void CommandGrid::toggleBreakpoint() {
  if (currentIndex().isValid()) list().ToggleBreakpoint(currentIndex().row() + 1);
}

void CommandGrid::SelectRows(int first, int last) {
  setCurrentIndex(model_->IndexOf(first));
  selectionModel()->select(QItemSelection(model_->index(first - 1, 0), model_->IndexOf(last)),
                           QItemSelectionModel::ClearAndSelect);
}

void CommandGrid::undo() { GoToChange(list().Undo()); }

void CommandGrid::redo() { GoToChange(list().Redo()); }

void CommandGrid::GoToChange(int row) {
  if (row > 0 && !list().InUse()) setCurrentIndex(model_->IndexOf(row));
}

bool CommandGrid::EditByKey(const QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    copy();
  } else if (event->matches(QKeySequence::Cut)) {
    cut();
  } else if (event->matches(QKeySequence::Paste)) {
    paste();
  } else if (event->matches(QKeySequence::Undo)) {
    undo();
  } else if (event->matches(QKeySequence::Redo) || IsControlY(event)) {
    redo();
  } else if (event->matches(QKeySequence::Delete)) {
    deleteSelection();
  } else if (event->key() == Qt::Key_V && event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)) {
    insertPaste();
  } else if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) {
    insertRow();
  } else {
    return false;
  }
  return true;
}

void CommandGrid::keyPressEvent(QKeyEvent* event) {
  if (EditByKey(event)) return event->accept();
  if (base::IsEnter(*event) && state() != EditingState) {
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
  // Pasted lines have filled further rows.
  const QModelIndex last = model_->IndexOf(model_->last_edited_row());
  if (last.row() > currentIndex().row()) setCurrentIndex(last);
}

void CommandGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) {
  QTableView::closeEditor(editor, hint);
  ShowFocus();
  // Enter has committed the text: go to the next row, as in any grid. A run that moves on also closes the
  // editor, but goes to its own row.
  if (hint == QAbstractItemDelegate::SubmitModelCache && !showing_current_)
    setCurrentIndex(model_->IndexOf(std::min(model_->last_edited_row() + 1, kListRows)));
}

void CommandGrid::focusInEvent(QFocusEvent* event) {
  if (event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason) Q_EMIT Touched();
  QTableView::focusInEvent(event);
  ShowFocus();
}

void CommandGrid::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  ShowFocus();
}

void CommandGrid::ShowFocus() {
  update();
  viewport()->update();
}

void CommandGrid::mousePressEvent(QMouseEvent* event) {
  Q_EMIT Touched();
  QTableView::mousePressEvent(event);
  const QModelIndex clicked = indexAt(event->position().toPoint());
  const bool marker = clicked.isValid() && clicked.column() == CommandListModel::kMarkerColumn;
  if (marker && event->button() == Qt::LeftButton && event->modifiers() == Qt::NoModifier && !list().InUse())
    list().ToggleBreakpoint(clicked.row() + 1);
}

QModelIndex CommandGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  const QModelIndex target = QTableView::moveCursor(action, modifiers);
  if (target == currentIndex()) ChooseCursorRow();
  return target;
}

void CommandGrid::resizeEvent(QResizeEvent* event) {
  const bool was_in_view = QRect(QPoint(), event->oldSize()).intersects(visualRect(currentIndex()));
  QTableView::resizeEvent(event);
  if (was_in_view) scrollTo(currentIndex());
}

void CommandGrid::dragEnterEvent(QDragEnterEvent* event) { AnswerDrag(event); }

void CommandGrid::dragMoveEvent(QDragMoveEvent* event) { AnswerDrag(event); }

void CommandGrid::AnswerDrag(QDropEvent* event) const {
  const bool wanted = !list().InUse() && !DraggedFile(*event->mimeData()).isEmpty();
  event->setAccepted(wanted);
  if (wanted) event->acceptProposedAction();
}

void CommandGrid::dropEvent(QDropEvent* event) {
  AnswerDrag(event);
  if (event->isAccepted()) Q_EMIT FileDropped(DraggedFile(*event->mimeData()));
}

// A frame shows that the grid has the keyboard focus.
bool CommandGrid::event(QEvent* event) {
  const bool done = QTableView::event(event);
  const QWidget* focus = QApplication::focusWidget();
  if (event->type() != QEvent::Paint || focus == nullptr || (focus != this && !isAncestorOf(focus)))
    return done;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  return done;
}

void CommandGrid::contextMenuEvent(QContextMenuEvent* event) {
  Q_EMIT Touched();
  Q_EMIT popupRequested(event->globalPos());
}

}  // namespace kolvane::script
