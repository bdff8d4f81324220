#pragma once

#include <QAbstractTableModel>
#include <string>

#include "values/store.h"

namespace kolvane::values {

/// The rows of a store as a table: time of day, command, and a column for each field. Views are notified of
/// new rows by ShowRows.
class ValuesModel final : public QAbstractTableModel {
  Q_OBJECT

 public:
  static constexpr int kTimeColumn = 0;
  static constexpr int kCommandColumn = 1;
  static constexpr int kFirstFieldColumn = 2;

  /// The store must outlive the model.
  ValuesModel(const Store& store, std::string decimal_sign, QObject* parent);

  /// Shows the first `rows` rows of the store.
  void ShowRows(std::size_t rows);

  int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
  int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns_; }
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  /// The cells of these rows separated by tabs, one line per row.
  QString Text(const RowRanges& ranges) const;

 private:
  QString CellText(std::size_t row, int column) const;
  QString TimeOf(std::size_t row) const;

  const Store& store_;
  std::string decimal_sign_;
  std::uint64_t generation_;
  int rows_ = 0;
  int columns_ = kFirstFieldColumn;
};

}  // namespace kolvane::values
