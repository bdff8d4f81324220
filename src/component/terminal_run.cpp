#include "component/terminal_run.h"

#include <unistd.h>
#include <QApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <optional>

#include "base/runtime_error.h"
#include "base/user_folder.h"
#include "component/application.h"
#include "component/folder.h"
#include "component/headless_messages.h"
#include "component/host_parameters.h"
#include "component/settings.h"
#include "component/settings_store.h"
#include "component/texts.h"
#include "component/unload.h"
#include "device/connection_form.h"
#include "device/lazy_port_library.h"
#include "device/operating_mode.h"
#include "window/main_window.h"

namespace kolvane::component {
namespace {

namespace mode = device::operating_mode;

bool IsHostMode(std::int16_t oper_mode) {
  return oper_mode == mode::kHostByIndex || oper_mode == mode::kHost;
}

// Marks the window as open for as long as it lives: a host's event handler could open a second one meanwhile.
class OpenMark {
 public:
  explicit OpenMark(bool& open) : open_(open) {
    if (open_) throw base::RuntimeError(base::RuntimeError::Kind::kOther, texts::kAlreadyOpen);
    open_ = true;
  }
  ~OpenMark() { open_ = false; }
  OpenMark(const OpenMark&) = delete;
  OpenMark& operator=(const OpenMark&) = delete;

 private:
  bool& open_;
};

// The settings of this run, or the message and the error where one of them cannot be read.
void LoadOrTell(const SettingsStore& store, ComponentState& state) {
  window::MessagePrompt prompt(nullptr);
  try {
    LoadSettings(store, {state.connection, state.terminal, state.window}, !IsHostMode(state.device.OperMode));
  } catch (const base::RuntimeError& error) {
    prompt.ShowError(error.what());
    throw;
  }
  if (state.device.OperMode == mode::kPortLibrary) {
    device::ConfirmStoredConnection(state.connection, ComponentFolder(state.options.Folder), prompt);
  } else if (!IsHostMode(state.device.OperMode)) {
    device::DeriveFromStored(state.connection);
  }
}

// The window is going, so what could not be saved is told where nobody has to answer.
void UnloadOrTell(ComponentState& state, window::MainWindow& window, SettingsStore& store) {
  const auto failure = Unload(state, window.core(), window.log(), store);
  if (failure) HeadlessMessages(STDERR_FILENO, false).ShowError(texts::NotSaved(*failure));
}

// Closes the terminal once the descriptor becomes readable, be it while a message stands before the window.
class CloseRequest {
 public:
  explicit CloseRequest(int descriptor) {
    if (descriptor < 0) return;
    notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
      notifier_->setEnabled(false);
      came_ = true;
      CloseAll();
    });
  }

  bool came() const { return came_; }
  void SetWindow(window::MainWindow& window) { window_ = &window; }

 private:
  // Message boxes and dialogs above the window go first: they would keep it from ending.
  void CloseAll() {
    for (QWidget* top = QApplication::activeModalWidget(); top != nullptr && top != window_;
         top = QApplication::activeModalWidget()) {
      if (!top->close()) break;
    }
    if (window_ != nullptr) window_->close();
  }

  std::unique_ptr<QSocketNotifier> notifier_;
  window::MainWindow* window_ = nullptr;
  bool came_ = false;
};

// Pressed by the event loop, one after the other.
void PressAtStart(window::MainWindow& window, const TerminalOptions& options) {
  if (options.ConnectAtStart) QTimer::singleShot(0, &window, [&window] { window.core().connect.Press(); });
  if (options.PlayAtStart) QTimer::singleShot(0, &window, [&window] { window.PressPlay(); });
}

void ShowModally(window::MainWindow& window, const TerminalOptions& options) {
  window.setWindowModality(Qt::ApplicationModal);
  window.setAttribute(Qt::WA_QuitOnClose, false);
  QEventLoop loop;
  QObject::connect(&window, &window::MainWindow::Closed, &loop, &QEventLoop::quit);
  window.show();
  if (!options.CommandList.empty()) window.OpenCommandFile(options.CommandList);
  PressAtStart(window, options);
  // A message about the list may have been closed along with the window.
  if (window.isVisible()) loop.exec();
}

// What a window's controls show starts anew. The last answer and status, the flags that $SILENT and $AUTOLOG
// set, and what a command list has left behind belong to the component's life.
void ResetForWindow(ComponentState& state) {
  state.device.open_step_status = 0;
  state.terminal.receive = {};
  state.terminal.shown = {};
  state.terminal.options = {};
  state.script.record = {};
}

// Only the user's own terminal keeps and offers lists, not one with settings of its own.
std::string UnsavedFolder(const ComponentState& state) {
  if (state.device.OperMode != mode::kPortLibrary || !state.options.SettingsFile.empty()) return {};
  const auto folder = base::UserFolder("XDG_STATE_HOME", ".local/state");
  return folder.empty() ? std::string() : (folder / "Unsaved").string();
}

}  // namespace

void RunTerminal(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx) {
  Application::CheckThread();
  const OpenMark mark(state.window_open);
  state.device.DevIdx = dev_idx;
  state.device.OperMode = oper_mode;
  const HostParts parts = ReadHostParameters(state.device, state.connection);
  state.host_parts = IsHostMode(oper_mode) ? std::optional(parts) : std::nullopt;
  const Application application;
  CloseRequest close(state.options.CloseDescriptor);
  ResetForWindow(state);
  const auto store = OpenIniStore(state.options.SettingsFile);
  LoadOrTell(*store, state);
  state.device.connected = IsHostMode(oper_mode);
  device::LazyPortLibrary library(OwnFolder());
  window::MainWindow window({{state.device, state.connection, state.terminal},
                             state.script,
                             state.window,
                             library,
                             ComponentFolder(state.options.Folder),
                             UnsavedFolder(state)});
  if (IsHostMode(oper_mode)) window.core().connect.ShowConnected();
  window.Load();
  window.OnUnload([&] { UnloadOrTell(state, window, *store); });
  close.SetWindow(window);
  if (close.came()) QTimer::singleShot(0, &window, [&window] { window.close(); });
  TerminalOptions options = state.options;
  options.ConnectAtStart &= oper_mode == mode::kPortLibrary;
  state.can_unload = false;
  ShowModally(window, options);
}

}  // namespace kolvane::component
