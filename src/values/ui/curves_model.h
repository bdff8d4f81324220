#pragma once

#include <QAbstractTableModel>
#include <optional>
#include <string>

#include "values/curve.h"
#include "values/curve_list.h"
#include "values/store.h"

namespace kolvane::values {

/// The curves as a table: whether each is shown, its colour and name, which can be changed, its value at the
/// plot's cursor, and the statistics of some rows. Only what is visible is computed.
class CurvesModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { kName, kValue, kCount, kMinimum, kMaximum, kMean, kDeviation, kColumns };

  /// Store and list must outlive the model.
  CurvesModel(const Store& store, CurveList& curves, std::string decimal_sign, QObject* parent);

  /// Adds new curves; resets the model if the store was cleared.
  void Refresh();
  /// Set the rows that the statistics cover, and where the values are read.
  void SetRanges(RowRanges ranges);
  void SetCursor(const PlotRows& rows, std::optional<double> x);
  void SetColor(int curve, std::optional<std::uint32_t> color);
  /// Shows or hides curves.
  void Show(const QList<int>& numbers, bool shown);
  void ShowOnly(const QList<int>& numbers);
  void SetDark(bool dark);

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : kColumns; }
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 Q_SIGNALS:
  /// The user has changed how a curve looks.
  void LooksChanged();

 private:
  QVariant NameData(std::size_t curve, int role) const;
  QString NumberText(std::size_t curve, int column, int deviation_digits) const;
  QString ValueText(std::size_t curve) const;
  QString ShownText(double value, int digits) const;
  void ColumnsChanged(int first, int last);
  void Apply();

  const Store& store_;
  CurveList& curves_;
  std::string decimal_sign_;
  int rows_ = 0;
  std::uint64_t generation_;
  RowRanges ranges_;
  std::optional<PlotRows> cursor_rows_;
  std::optional<double> cursor_;
  bool dark_ = false;
};

}  // namespace kolvane::values
