#pragma once

#include <vector>

#include "script/ui/info_list.h"
#include "script/watch.h"

namespace kolvane::script {

/// The state of a stopped run, `WatchPanel`: name and value. Shown when a breakpoint, or running up to a row,
/// has stopped a run.
class WatchPanel final : public InfoList {
  Q_OBJECT

 public:
  explicit WatchPanel(QWidget* parent = nullptr);

  /// Shows `items`; expanded branches stay expanded.
  void Show(const std::vector<WatchItem>& items);
};

}  // namespace kolvane::script
