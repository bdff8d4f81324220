#pragma once

#include <QMainWindow>
#include <functional>

#include "device/port_library_source.h"
#include "script/command_list.h"
#include "terminal/interactive_send.h"
#include "terminal/log_file.h"
#include "terminal/terminal_core.h"
#include "terminal/ui/output_pane.h"
#include "terminal/window_settings.h"
#include "window/command_box_view.h"
#include "window/main_toolbar.h"
#include "window/menus.h"
#include "window/message_prompt.h"
#include "window/pane_commands.h"
#include "window/receive_view.h"
#include "window/window_area.h"

namespace kolvane::window {

/// The terminal window `frmTerminal`: it joins the widgets with the session and decides nothing itself.
class MainWindow final : public QMainWindow,
                         private terminal::ConnectionView,
                         private terminal::CommandRecorder {
  Q_OBJECT

 public:
  MainWindow(terminal::TerminalSlices slices, const terminal::WindowSettings& settings,
             device::PortLibrarySource& library);

  terminal::TerminalCore& core() { return core_; }
  terminal::LogSink& log() { return log_; }

  /// Puts the loaded settings into the controls and prepares the device. Throws RuntimeError where a setting
  /// does not fit its control.
  void Load();

  /// Called once when the user closes the window, while it is still shown.
  void OnUnload(std::function<void()> unload) { unload_ = std::move(unload); }

 Q_SIGNALS:
  void Closed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ConnectionChanged() override;
  bool Recording() const override { return false; }
  void AddToScript(std::string_view) override {}

  void BuildArea();
  void ConnectMenus();
  void ConnectSending();
  void Toolbar1ButtonClick(const QString& key);
  void Send();
  void OpenConnectionMenu();
  void ApplyLook(const terminal::Look& look);
  void On(const char* item, const std::function<void()>& event);

  terminal::TerminalSlices slices_;
  MessagePrompt prompt_;
  WindowArea* area_;
  MainToolbar* toolbar1_;
  Menus menus_;
  terminal::OutputPane* pane_;
  script::CommandList list_;
  terminal::LogFile log_;
  terminal::TerminalCore core_;
  CommandBoxView box_;
  terminal::InteractiveSend interactive_;
  ReceiveView receive_;
  PaneCommands pane_commands_;
  std::function<void()> unload_;
};

}  // namespace kolvane::window
