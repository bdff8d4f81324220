#pragma once

#include <QComboBox>

#include "terminal/interactive_send.h"

namespace kolvane::window {

/// Shows the command history in cmbCommand.
class CommandBoxView final : public terminal::CommandBox {
 public:
  explicit CommandBoxView(QComboBox* box) : box_(box) {}
  void ShowHistory(const terminal::CommandHistory& history, terminal::HistoryChange change) override;

 private:
  QComboBox* box_;
};

}  // namespace kolvane::window
