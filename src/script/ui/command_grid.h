#pragma once

#include <QTableView>

#include "base/ui/marked_scroll_bar.h"
#include "script/ui/command_list_model.h"
#include "script/ui/row_delegate.h"

namespace kolvane::script {

/// The grid `CommandScript` beside the output pane. Its current cell is the text of the list's current row,
/// as long as there is something to see: a run ends past the last row. While a list runs the user can look
/// and edit, but not move the row that the run stands at.
class CommandGrid final : public QTableView {
  Q_OBJECT

 public:
  /// `list` outlives the grid.
  explicit CommandGrid(CommandList& list, QWidget* parent = nullptr);
  ~CommandGrid() override;

  CommandList& list() const { return model_->list(); }
  void ShowLook(const QFont& font, Color text, const QColor& ground);
  struct RowSpan {
    int first = 1;
    int last = 0;
  };
  /// The marked rows; last 0 where none is.
  RowSpan SelectedRows() const;
  /// Puts the cursor into the row, in view.
  void GoToRow(int row) { setCurrentIndex(model_->IndexOf(row)); }
  /// Highlights what a search has found, in the rows and at `marks` in the scroll bar.
  void ShowHits(RowHitsOf hits, const std::vector<double>& marks);
  /// Marks what the checker has found, and shows the rows inside loops and conditions to the right.
  void ShowFindings(const std::vector<checker::Finding>& findings, std::vector<int> indents) {
    model_->ShowFindings(findings, std::move(indents));
    DescribeState();
  }
  /// Takes over what is being typed into a row, as Enter would, and stays there.
  void FinishEdit();
  /// Brings the rows up to the list.
  void Flush() { model_->Flush(); }
  /// Shows at once what has changed, and after a run, which has passed the empty rows after the list, puts
  /// the cursor where there is something to see: in `last_row`, the one carried out last, or in row 1.
  void ShowRunEnd(int last_row);

 public Q_SLOTS:
  void copy() const;
  void cut();
  /// Lines of the clipboard over the rows from the current one on.
  void paste();
  /// Empties the marked rows; rows that are empty already are taken out, and the rows after them move up.
  void deleteSelection();
  void undo();
  void redo();
  /// An empty row at the current one, unless the last row of the list would be lost.
  void insertRow();
  void removeRows();
  /// The clipboard's lines as rows before the current one.
  void insertPaste();
  // On the marked rows, which stay marked; nothing while a run is on.
  void duplicateRows();
  void moveRowsUp();
  void moveRowsDown();
  void toggleComments();
  /// In the current row.
  void toggleBreakpoint();

 Q_SIGNALS:
  /// The user has turned to the grid, with the mouse or by Tab.
  void Touched();
  void popupRequested(const QPoint& global);
  void FileShownAgain();
  /// Rows that were to be pasted or inserted found no room; `message` tells the user.
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

 private:
  void MoveRowsBy(RowSpan rows, int by);
  void RowDragged(int row, int from, int to);
  void SetUpHeaders();
  void Connect();
  bool EditByKey(const QKeyEvent* event);
  void GoToChange(int row);
  void MarkRows(int first, int last);
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
