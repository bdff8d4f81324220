#pragma once

#include <QMainWindow>
#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "device/port_library.h"
#include "inspect/decode.h"
#include "pane/ui/output_pane.h"
#include "pane/ui/pane_find.h"
#include "script/ui/list_find.h"
#include "terminal/interactive_send.h"
#include "terminal/terminal_core.h"
#include "terminal/terminal_state.h"
#include "window/analysis_commands.h"
#include "window/edit_targets.h"
#include "window/extras_menu.h"
#include "window/file_dialogs.h"
#include "window/help_commands.h"
#include "window/listener.h"
#include "window/lock_gui.h"
#include "window/log_commands.h"
#include "window/menus.h"
#include "window/message_prompt.h"
#include "window/recent_lists.h"
#include "window/script_view.h"
#include "window/terminal_bar.h"
#include "window/toolbars.h"
#include "window/wait_view.h"
#include "window/window_area.h"
#include "window/window_memory.h"

namespace kolvane::window {

/// What the window shows and works on; all of it must outlive the window.
struct WindowContext {
  terminal::TerminalSlices slices;
  script::ScriptState& script;
  terminal::WindowSettings& settings;
  device::PortLibrarySource& library;
  std::string folder;             ///< the component's
  CloseRequest* close = nullptr;  ///< null: only the user closes it
  std::string own_folder = {};  ///< of the component's file, for help files missing in `folder`; may be empty
  std::string user_folder = {};  ///< the user's own, for format templates; may be empty
  std::string unsaved = {};      ///< for copies of unsaved command lists; empty: none are kept
  StateStore* state = nullptr;   ///< state left by earlier windows; null: nothing is kept
};

/// The terminal window `frmTerminal`: it connects the widgets with the session and decides nothing itself.
class MainWindow final : public QMainWindow, private terminal::ConnectionView {
  Q_OBJECT
  Q_PROPERTY(bool busy READ IsBusy)

 public:
  explicit MainWindow(WindowContext context);

  terminal::TerminalCore& core() { return core_; }
  terminal::Log& log() { return log_.control(); }

  /// Puts the loaded settings into the controls and prepares the device. Throws RuntimeError if a setting
  /// does not fit its control.
  void Load();

  /// Loads a command file into the list; shows a failure.
  void OpenCommandFile(const std::string& name) { script_.files().OpenFile(name); }

  /// Like the toolbar's buttons: connects or disconnects, plays the command list from its first row.
  void PressConnect();
  void PressPlay();

  /// While an exchange, an attempt to connect or a run is in progress.
  bool IsBusy() const;

  /// Called once when the user closes the window, while it is still shown.
  void OnUnload(std::function<void()> unload) { unload_ = std::move(unload); }

 Q_SIGNALS:
  void Closed();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void ConnectionEnding() override;
  void ConnectionChanged() override;
  bool Dialling(const device::DialProgress& progress) override;
  void BeforeUnattended() override { wait_.PaintNow(); }
  bool Waiting(device::Operation operation, double seconds) override;
  void WaitEnded() override { wait_.WaitEnded(); }

  std::vector<std::string> HelpFolders() const { return {context_.folder, context_.own_folder}; }
  void BuildArea();
  void BuildScript();
  void ConnectFiles();
  void ConnectPane();
  void ConnectConnection();
  void ConnectOptions();
  void ConnectExtras();
  void ConnectFinding();
  void OpenFindBar();
  void ShowUnsendable();
  void ConnectSending();
  void ConnectWaiting();
  void KeepUnsaved();
  void CloseWhenIdle();
  bool MayContinue() const { return !close_when_idle_ && !prompt_.Unattended(); }
  /// While a call of the device is on the stack: a wait serves events, or the host in a call of its own.
  bool IsWaiting() const { return wait_.IsServing() || core_.waits.IsUnderWay(); }
  void BeginExchange();
  void Send();
  void OpenConnectionMenu();
  void ConfigureConnection();
  void Lock(bool locked);
  void ShowTimeStamps();
  void ShowStillOpen();
  QString MeaningOf(const QString& line);
  void ShowCaption();
  void ShowConfigureButton();
  void ShowGettingStarted();
  /// Makes each of the menu items and buttons with these names carry out `event`.
  void On(std::initializer_list<const char*> names, const std::function<void()>& event);

  WindowContext context_;
  MessagePrompt prompt_;
  WindowArea* area_;
  MainToolbar* toolbar1_;
  Menus menus_;
  ExtrasMenu extras_;
  pane::OutputPane* pane_;
  PaneTarget pane_target_;
  PopupCommands popup_;
  LogCommands log_;
  WaitView wait_;
  terminal::TerminalCore core_;
  CommandDialogs dialogs_;
  GuiLock lock_;
  ScriptView script_;
  CommandReference reference_;
  GridTarget grid_target_;
  CommandBoxView box_;
  terminal::InteractiveSend interactive_;
  terminal::CommandLines lines_;
  Listener listener_;
  ReceiveView receive_;
  HelpCommands help_;
  pane::PaneFind* find_in_pane_;
  script::ListFind* find_in_list_;
  RecentLists* recent_;
  ValuesCommand values_;
  WindowMemory* memory_ = nullptr;
  inspect::InspectorState inspector_;
  std::function<void()> unload_;
  bool close_when_idle_ = false;
};

}  // namespace kolvane::window
