#include "script/ui/command_grid.h"

#include <QFontMetrics>
#include <QHeaderView>

namespace kolvane::script {

QVariant CommandListModel::data(const QModelIndex& index, int role) const {
  const bool text = role == Qt::DisplayRole || role == Qt::EditRole;
  if (!text || index.column() != kTextColumn) return {};
  return QString::fromStdString(list_.Text(index.row() + 1));
}

QVariant CommandListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole || orientation != Qt::Horizontal) return {};
  return section == kTextColumn ? QStringLiteral("Befehlsliste") : QStringLiteral(" ");
}

CommandGrid::CommandGrid(CommandList& list, QWidget* parent) : QTableView(parent) {
  setObjectName(QStringLiteral("CommandScript"));
  setAccessibleName(QStringLiteral("Befehlsliste"));
  setModel(new CommandListModel(list, this));
  setTabKeyNavigation(false);
  verticalHeader()->hide();
  verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
  horizontalHeader()->setSectionResizeMode(CommandListModel::kMarkerColumn, QHeaderView::Fixed);
  horizontalHeader()->setSectionResizeMode(CommandListModel::kTextColumn, QHeaderView::Stretch);
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  setColumnWidth(CommandListModel::kMarkerColumn, 18);
  setCurrentIndex(model()->index(0, CommandListModel::kTextColumn));
}

}  // namespace kolvane::script
