#include "component/terminal_run.h"

#include <unistd.h>
#include <QApplication>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

#include "base/runtime_error.h"
#include "component/application.h"
#include "component/folder.h"
#include "component/headless_messages.h"
#include "component/host_parameters.h"
#include "component/settings.h"
#include "component/settings_store.h"
#include "component/settings_texts.h"
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
    if (open_)
      throw base::RuntimeError(base::RuntimeError::Kind::kOther, "Das Terminal ist bereits geöffnet");
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
  if (state.device.OperMode == mode::kPortLibrary)
    device::ConfirmStoredConnection(state.connection, ComponentFolder(state.options.Folder), prompt);
}

// The window is going, so what could not be saved is told where nobody has to answer.
void UnloadOrTell(ComponentState& state, window::MainWindow& window, SettingsStore& store) {
  const auto failure = Unload(state, window.core(), window.log(), store);
  if (failure) HeadlessMessages(STDERR_FILENO, false).ShowError(texts::NotSaved(*failure));
}

// Message boxes and dialogs above the window go first: they would keep it from ending.
void CloseAll(window::MainWindow& window) {
  for (QWidget* top = QApplication::activeModalWidget(); top != nullptr && top != &window;
       top = QApplication::activeModalWidget()) {
    if (!top->close()) break;
  }
  window.close();
}

void ShowModally(window::MainWindow& window, const TerminalOptions& options, bool connect_at_start) {
  window.setWindowModality(Qt::ApplicationModal);
  window.setAttribute(Qt::WA_QuitOnClose, false);
  QEventLoop loop;
  QObject::connect(&window, &window::MainWindow::Closed, &loop, &QEventLoop::quit);
  if (options.CloseDescriptor >= 0) {
    auto* end = new QSocketNotifier(options.CloseDescriptor, QSocketNotifier::Read, &window);
    QObject::connect(end, &QSocketNotifier::activated, &window, [&window, end] {
      end->setEnabled(false);
      CloseAll(window);
    });
  }
  window.show();
  if (!options.CommandList.empty()) window.OpenCommandFile(options.CommandList);
  if (connect_at_start) QTimer::singleShot(0, &window, [&window] { window.core().connect.Press(); });
  loop.exec();
}

// A window starts anew; what belongs to the component's life stays.
void ResetForWindow(ComponentState& state) {
  state.device.last_result = 0;
  state.device.open_step_status = 0;
  state.terminal = {};
  state.can_unload = false;
}

}  // namespace

void RunTerminal(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx) {
  const OpenMark mark(state.window_open);
  state.device.DevIdx = dev_idx;
  state.device.OperMode = oper_mode;
  ReadHostParameters(state.device, state.connection);
  const Application application;
  ResetForWindow(state);
  const auto store = OpenIniStore(state.options.SettingsFile);
  LoadOrTell(*store, state);
  if (IsHostMode(oper_mode)) state.device.connected = true;
  device::LazyPortLibrary library(OwnFolder());
  window::MainWindow window({{state.device, state.connection, state.terminal},
                             state.script,
                             state.window,
                             library,
                             ComponentFolder(state.options.Folder)});
  if (IsHostMode(oper_mode)) window.core().connect.ShowConnected();
  window.Load();
  window.OnUnload([&] { UnloadOrTell(state, window, *store); });
  ShowModally(window, state.options, state.options.ConnectAtStart && oper_mode == mode::kPortLibrary);
}

}  // namespace kolvane::component
