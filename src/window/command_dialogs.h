#pragma once

#include <QWidget>

#include "script/command_file_menu.h"

namespace kolvane::window {

/// The file dialogs of the command list.
class CommandDialogs final : public script::CommandFileDialogs {
 public:
  explicit CommandDialogs(QWidget* parent) : parent_(parent) {}
  std::optional<std::string> AskOpenName(const std::string& in_hand) override;
  std::optional<std::string> AskSaveName(const std::string& in_hand) override;

 private:
  QWidget* parent_;
};

}  // namespace kolvane::window
