#pragma once

#include <QObject>

#include "terminal/log_control.h"
#include "window/menus.h"
#include "window/message_prompt.h"
#include "window/status_bars.h"
#include "window/toolbars.h"

namespace kolvane::window {

/// Shows the state of the log in toolbar, menu and status bar, and asks for the name of its file.
class LogCommands final : public QObject, private terminal::LogObserver {
  Q_OBJECT

 public:
  LogCommands(MainToolbar* toolbar, Menus& menus, StatusBars& status_bars, terminal::OutputFlags& flags,
              MessagePrompt& prompt, QWidget* window);
  ~LogCommands() override { control_.Observe(nullptr); }

  terminal::LogControl& control() { return control_; }
  void Open();

 private:
  void LogChanged() override;

  MainToolbar* toolbar_;
  Menus& menus_;
  StatusBars& status_bars_;
  QWidget* window_;
  terminal::LogControl control_;
};

}  // namespace kolvane::window
