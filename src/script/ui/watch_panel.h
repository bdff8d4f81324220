#pragma once

#include <QTreeWidget>
#include <vector>

#include "script/watch.h"

namespace kolvane::script {

/// The state of a stopped run, `WatchPanel`: name and value. Hidden until a breakpoint, or running up to a
/// row, has stopped a run.
class WatchPanel final : public QTreeWidget {
  Q_OBJECT

 public:
  explicit WatchPanel(QWidget* parent = nullptr);

  /// Shows `items`; expanded branches stay expanded.
  void Show(const std::vector<WatchItem>& items);
  QSize sizeHint() const override;

 Q_SIGNALS:
  void Closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace kolvane::script
