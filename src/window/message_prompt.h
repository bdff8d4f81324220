#pragma once

#include <QAction>
#include <QWidget>
#include <functional>

#include "base/prompt.h"

namespace kolvane::window {

/// Message boxes above a window.
class MessagePrompt final : public base::Prompt {
 public:
  explicit MessagePrompt(QWidget* parent) : parent_(parent) {}

  void ShowError(std::string_view text) override;
  void ShowMessage(std::string_view text) override;

  /// Runs a window event; a run-time error in it becomes a message box with its description.
  void Guard(const std::function<void()>& event);
  /// Makes `event` what a menu item or a button does.
  void OnTrigger(QAction* action, std::function<void()> event);

 private:
  QWidget* parent_;
};

}  // namespace kolvane::window
