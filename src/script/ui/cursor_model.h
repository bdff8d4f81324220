#pragma once

#include <QItemSelectionModel>
#include <functional>
#include <utility>

namespace kolvane::script {

/// Calls `placed` whenever a cell is made current, even if it already was, which the view does not notice.
class CursorModel final : public QItemSelectionModel {
 public:
  CursorModel(QAbstractItemModel* model, QObject* parent, std::function<void()> placed)
      : QItemSelectionModel(model, parent), placed_(std::move(placed)) {}

  void setCurrentIndex(const QModelIndex& index, SelectionFlags command) override {
    QItemSelectionModel::setCurrentIndex(index, command);
    placed_();
  }

 private:
  std::function<void()> placed_;
};

}  // namespace kolvane::script
