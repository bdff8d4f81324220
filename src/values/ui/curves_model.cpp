#include "values/ui/curves_model.h"

#include <utility>

#include "base/ui/qt_text.h"
#include "values/plot_view.h"
#include "values/texts.h"
#include "values/ui/plot_painter.h"

namespace kolvane::values {
namespace {

constexpr int kDigits = 9;
constexpr int kDeviationDigits = 5;  // a column has no room for more of a small number

}  // namespace

CurvesModel::CurvesModel(const Store& store, CurveList& curves, std::string decimal_sign, QObject* parent)
    : QAbstractTableModel(parent),
      store_(store),
      curves_(curves),
      decimal_sign_(std::move(decimal_sign)),
      generation_(store.generation()) {}

void CurvesModel::Refresh() {
  curves_.Refresh();
  const int rows = static_cast<int>(curves_.size());
  if (generation_ != store_.generation()) {
    beginResetModel();
    generation_ = store_.generation();
    rows_ = rows;
    endResetModel();
  } else if (rows > rows_) {
    beginInsertRows({}, rows_, rows - 1);
    rows_ = rows;
    endInsertRows();
    // Another curve may have been hidden to make room.
    ColumnsChanged(kName, kName);
  }
}

void CurvesModel::SetRanges(RowRanges ranges) {
  if (ranges == ranges_) return;
  ranges_ = std::move(ranges);
  ColumnsChanged(kCount, kDeviation);
}

void CurvesModel::SetCursor(const PlotRows& rows, std::optional<double> x) {
  cursor_rows_ = rows;
  cursor_ = x;
  ColumnsChanged(kValue, kValue);
}

void CurvesModel::SetColor(int curve, std::optional<std::uint32_t> color) {
  curves_.SetColor(static_cast<std::size_t>(curve), color);
  Apply();
}

void CurvesModel::Show(const QList<int>& numbers, bool shown) {
  for (const int number : numbers) curves_.Show(static_cast<std::size_t>(number), shown);
  Apply();
}

void CurvesModel::ShowOnly(const QList<int>& numbers) {
  for (int number = 0; number < rows_; ++number)
    curves_.Show(static_cast<std::size_t>(number), numbers.contains(number));
  Apply();
}

void CurvesModel::SetDark(bool dark) {
  dark_ = dark;
  ColumnsChanged(kName, kName);
}

void CurvesModel::Apply() {
  ColumnsChanged(kName, kName);
  Q_EMIT LooksChanged();
}

void CurvesModel::ColumnsChanged(int first, int last) {
  if (rows_ > 0) Q_EMIT dataChanged(index(0, first), index(rows_ - 1, last));
}

QVariant CurvesModel::data(const QModelIndex& index, int role) const {
  // Once the store has been cleared, the rows refer to curves that no longer exist.
  if (!index.isValid() || index.row() >= rows_ || generation_ != store_.generation()) return {};
  const auto curve = static_cast<std::size_t>(index.row());
  if (index.column() == kName) return NameData(curve, role);
  if (role == Qt::DisplayRole) return NumberText(curve, index.column(), kDeviationDigits);
  if (role == Qt::ToolTipRole) return NumberText(curve, index.column(), kDigits);
  return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
}

QVariant CurvesModel::NameData(std::size_t curve, int role) const {
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::ToolTipRole:
      return base::ToQt(curves_.Name(curve));
    case Qt::CheckStateRole:
      return curves_.IsShown(curve) ? Qt::Checked : Qt::Unchecked;
    case Qt::DecorationRole: {
      const auto chosen = curves_.Color(curve);
      return chosen ? QColor::fromRgb(*chosen) : CurveColor(curve, dark_);
    }
    default:
      return {};
  }
}

QString CurvesModel::NumberText(std::size_t curve, int column, int deviation_digits) const {
  if (column == kValue) return ValueText(curve);
  const Summary summary = Summarize(store_.series(curve), ranges_);
  if (column == kCount) return base::ToQt(texts::Grouped(summary.count));
  if (summary.count == 0) return {};
  switch (column) {
    case kMinimum:
      return ShownText(summary.minimum, kDigits);
    case kMaximum:
      return ShownText(summary.maximum, kDigits);
    case kMean:
      return ShownText(summary.mean, kDigits);
    default: {
      const auto deviation = summary.StandardDeviation();
      return deviation ? ShownText(*deviation, deviation_digits) : QString();
    }
  }
}

QString CurvesModel::ValueText(std::size_t curve) const {
  if (!cursor_ || !curves_.IsShown(curve)) return {};
  const Series& series = store_.series(curve);
  const auto nearest = NearestValue(series, *cursor_rows_, *cursor_);
  return nearest ? ShownText(series.values()[*nearest], kDigits) : QString();
}

QString CurvesModel::ShownText(double value, int digits) const {
  return base::ToQt(values::NumberText(value, digits, decimal_sign_));
}

bool CurvesModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || index.column() != kName) return false;
  const auto curve = static_cast<std::size_t>(index.row());
  if (role == Qt::CheckStateRole) {
    curves_.Show(curve, value.toInt() == Qt::Checked);
  } else if (role == Qt::EditRole) {
    const std::string name = base::FromQt(value.toString().simplified());
    // The default name, left as it is, is not a choice of the user's.
    if (name != curves_.Name(curve)) curves_.SetName(curve, name);
  } else {
    return false;
  }
  Apply();
  return true;
}

Qt::ItemFlags CurvesModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  return index.column() == kName ? flags | Qt::ItemIsUserCheckable | Qt::ItemIsEditable : flags;
}

QVariant CurvesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return base::ToQt(texts::kCurveColumns[static_cast<std::size_t>(section)]);
}

}  // namespace kolvane::values
