#pragma once

#include <QAbstractTableModel>
#include <QTableView>

#include "script/command_list.h"

namespace kolvane::script {

/// The list's rows for a table view: a narrow marker column and the text.
class CommandListModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  static constexpr int kMarkerColumn = 0;
  static constexpr int kTextColumn = 1;

  CommandListModel(CommandList& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : kListRows; }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : 2; }
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  CommandList& list_;
};

/// The grid `CommandScript` beside the output pane.
class CommandGrid final : public QTableView {
  Q_OBJECT

 public:
  explicit CommandGrid(CommandList& list, QWidget* parent = nullptr);
};

}  // namespace kolvane::script
