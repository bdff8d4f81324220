#pragma once

#include <QTableView>

#include "base/ui/marked_scroll_bar.h"
#include "script/ui/command_list_model.h"
#include "script/ui/row_delegate.h"

namespace kolvane::script {

/// The grid `CommandScript` beside the output pane. Its current cell is the text of the list's current row,
/// except where a run has passed the last used row. While a list runs the user can view and edit it, but not
/// move the run's current row.
class CommandGrid final : public QTableView {
  Q_OBJECT

 public:
  /// `list` must outlive the grid.
  explicit CommandGrid(CommandList& list, QWidget* parent = nullptr);
  ~CommandGrid() override;

  CommandList& list() const { return model_->list(); }
  void ShowLook(const QFont& font, Color text, const QColor& background);
  struct RowSpan {
    int first = 1;
    int last = 0;
  };
  /// The selected rows; `last` is 0 if there are none.
  RowSpan SelectedRows() const;
  /// Moves the cursor to the row and scrolls it into view.
  void GoToRow(int row) { setCurrentIndex(model_->IndexOf(row)); }
  /// Makes the cursor's row the list's current one, unless a run is in progress. After a run that has passed
  /// the last used row they differ until the user chooses a row, even the one where the cursor is.
  void ChooseCursorRow();
  /// Highlights search hits, in the rows and at `marks` in the scroll bar.
  void ShowHits(RowHitsOf hits, const std::vector<double>& marks);
  /// Marks the checker's findings and indents the rows inside loops and conditions.
  void ShowFindings(const std::vector<checker::Finding>& findings, std::vector<int> indents) {
    model_->ShowFindings(findings, std::move(indents));
    DescribeState();
  }
  /// Commits what is being typed into a row, as Enter would, without going to the next row.
  void FinishEdit();
  /// Updates the rows from the list.
  void Flush() { model_->Flush(); }
  /// Shows pending changes at once. If the run has ended in the empty rows after the list, moves the cursor
  /// to `last_row`, the last one executed, or to row 1.
  void ShowRunEnd(int last_row);

 public Q_SLOTS:
  void copy() const;
  void cut();
  /// Pastes the lines of the clipboard over the rows from the current one on.
  void paste();
  /// Empties the selected rows; if all are empty already, removes them, and the rows after them move up.
  void deleteSelection();
  void undo();
  void redo();
  /// Inserts an empty row at the current one, unless the list is full.
  void insertRow();
  void removeRows();
  /// Inserts the clipboard's lines as rows before the current one.
  void insertPaste();
  // For the selected rows, which stay selected; they do nothing during a run.
  void duplicateRows();
  void moveRowsUp();
  void moveRowsDown();
  void toggleComments();
  /// In the current row.
  void toggleBreakpoint();

 Q_SIGNALS:
  /// The user has moved to the grid, with the mouse or by Tab.
  void Touched();
  void popupRequested(const QPoint& global);
  void FileShownAgain();
  /// Rows to be pasted or inserted did not fit; `message` is for the user.
  void ListFull(const std::string& message);
  /// A command file was dropped on the grid.
  void FileDropped(const QString& name);

 protected:
  void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void changeEvent(QEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  /// A current row that was in view stays there.
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// The first of the rows selected together with the current one.
  int FirstRow() const;
  void MoveRowsBy(RowSpan rows, int by);
  void RowDragged(int row, int from, int to);
  void SetUpHeaders();
  void Connect();
  bool EditByKey(const QKeyEvent* event);
  void GoToChange(int row);
  void SelectRows(int first, int last);
  bool IsPastList(int row) const;
  void ShowCurrentRow(int row);
  void MoveCursor(int row);
  void DescribeState();
  void ShowFocus();
  void AnswerDrag(QDropEvent* event) const;
  void FitRows();

  CommandListModel* model_;
  RowDelegate* delegate_;
  base::MarkedScrollBar* bar_;
  bool showing_current_ = false;
  bool dragging_ = false;
};

}  // namespace kolvane::script
