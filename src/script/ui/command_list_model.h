#pragma once

#include <QAbstractTableModel>
#include <QBasicTimer>

#include <map>
#include <vector>

#include "script/checker/checker.h"
#include "script/command_list.h"

namespace kolvane::script {

/// The command list's rows for a table view: a narrow marker column and the text. Data is always what the
/// list holds now; during a run views are notified of changes at most about thirty times a second, however
/// often the running row moves.
class CommandListModel final : public QAbstractTableModel, private CommandListObserver {
  Q_OBJECT

 public:
  static constexpr int kMarkerColumn = 0;
  static constexpr int kTextColumn = 1;

  /// The row's worst finding, a Worst, and the number of steps by which the row is indented.
  static constexpr int kFindingRole = Qt::UserRole + 1;
  static constexpr int kIndentRole = Qt::UserRole + 2;
  enum Worst : int { kNoFinding, kHintFound, kErrorFound };
  /// For the marker column: a combination of Mark.
  static constexpr int kMarkRole = Qt::UserRole + 3;
  enum Mark : int { kBreakpointMark = 1, kRunningMark = 2, kErrorMark = 4 };

  CommandListModel(CommandList& list, QObject* parent);
  ~CommandListModel() override;

  CommandList& list() const { return list_; }
  QModelIndex IndexOf(int row) const { return index(row - 1, kTextColumn); }

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : kListRows; }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 2; }
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  /// The last row filled by the last edit of a cell.
  int last_edited_row() const { return last_edited_row_; }

  /// Shows the checker's findings and each row's indentation; both are empty if nothing is checked.
  void ShowFindings(const std::vector<checker::Finding>& findings, std::vector<int> indents);

  /// Notifies the views of pending changes now.
  void Flush();

 Q_SIGNALS:
  void CurrentRowMoved(int row);
  void FileShownAgain();
  /// Lines pasted into a cell did not fit.
  void LinesLeftOut(int count);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void RowsChanged(int first, int last) override;
  void CurrentRowChanged(int row) override;
  void FileChanged() override { Q_EMIT FileShownAgain(); }

  void Note();
  QVariant LookOf(int row, int role) const;
  QVariant MarkOf(int row, int role) const;
  QString StateOf(int row) const;
  QString ErrorOf(int row) const;
  QString ToolTipOf(int row) const;
  Worst WorstOf(int row) const;

  struct RowFindings {
    bool error = false;
    QString text;  // one line per finding
  };

  CommandList& list_;
  std::map<int, RowFindings> findings_;
  std::vector<int> indents_;
  QBasicTimer frame_;
  int first_changed_ = kListRows + 1;
  int last_changed_ = 0;
  bool current_moved_ = false;
  int last_edited_row_ = 0;
};

}  // namespace kolvane::script
