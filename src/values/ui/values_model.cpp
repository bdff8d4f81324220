#include "values/ui/values_model.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/ui/qt_text.h"
#include "values/plot_view.h"
#include "values/row.h"
#include "values/store.h"
#include "values/texts.h"

namespace kolvane::values {

ValuesModel::ValuesModel(const Store& store, std::string decimal_sign, QObject* parent)
    : QAbstractTableModel(parent),
      store_(store),
      decimal_sign_(std::move(decimal_sign)),
      generation_(store.generation()) {}

void ValuesModel::ShowRows(std::size_t rows) {
  const auto shown = static_cast<int>(std::min<std::size_t>(rows, std::numeric_limits<int>::max()));
  const int columns = kFirstFieldColumn + static_cast<int>(store_.fields());
  if (generation_ != store_.generation() || shown < rows_) {
    beginResetModel();
    generation_ = store_.generation();
    rows_ = shown;
    columns_ = columns;
    endResetModel();
    return;
  }
  if (columns > columns_) {
    beginInsertColumns({}, columns_, columns - 1);
    columns_ = columns;
    endInsertColumns();
  }
  if (shown == rows_) return;
  beginInsertRows({}, rows_, shown - 1);
  rows_ = shown;
  endInsertRows();
}

QVariant ValuesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_) return {};
  switch (role) {
    case Qt::DisplayRole:
      return CellText(static_cast<std::size_t>(index.row()), index.column());
    case Qt::ToolTipRole:
      if (index.column() == kTimeColumn) return TimeOf(static_cast<std::size_t>(index.row()));
      return CellText(static_cast<std::size_t>(index.row()), index.column());
    case Qt::TextAlignmentRole:
      return QVariant(Qt::AlignVCenter |
                      (index.column() < kFirstFieldColumn ? Qt::AlignLeft : Qt::AlignRight));
    default:
      return {};
  }
}

QString ValuesModel::CellText(std::size_t row, int column) const {
  if (column == kTimeColumn) return TimeOf(row).mid(base::TimeText::kDateLength);
  const std::size_t command = store_.CommandOf(row);
  if (column == kCommandColumn) return base::ToQt(store_.command(command));
  const auto value =
      store_.Value(command, store_.RowOfCommand(row), static_cast<std::size_t>(column - kFirstFieldColumn));
  return value ? base::ToQt(NumberText(*value, decimal_sign_)) : QString();
}

QString ValuesModel::TimeOf(std::size_t row) const {
  std::string time;
  base::TimeText().Append(store_.times().TimeMs(row), '.', time);
  return base::ToQt(time);
}

QVariant ValuesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return section + 1;
  if (section == kTimeColumn) return base::ToQt(texts::kTime);
  return base::ToQt(section == kCommandColumn ? texts::kCommand
                                              : texts::Field(section - kFirstFieldColumn + 1));
}

QString ValuesModel::Text(const RowRanges& ranges) const {
  const char sign = decimal_sign_ == "," ? ',' : '.';
  CsvWriter writer({'\t', sign}, store_.fields());
  std::string text;
  for (const RowRange& range : ranges) {
    RowReader reader(store_, range.first);
    while (reader.row() < range.last) writer.Append(reader.Next(), text);
  }
  return base::ToQt(text);
}

}  // namespace kolvane::values
