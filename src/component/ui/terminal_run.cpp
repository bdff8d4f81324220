#include "component/ui/terminal_run.h"

#include <QApplication>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <memory>
#include <optional>

#include "base/runtime_error.h"
#include "base/scope_exit.h"
#include "base/system.h"
#include "component/folder.h"
#include "component/host_parameters.h"
#include "component/ini_store.h"
#include "component/settings.h"
#include "component/texts.h"
#include "component/ui/application.h"
#include "component/ui/close_watch.h"
#include "device/connection_form.h"
#include "device/connection_texts.h"
#include "device/device_state.h"
#include "device/loaded_port_library.h"
#include "window/icons.h"
#include "window/main_window.h"

namespace kolvane::component {

namespace {

// A host gives a rate; the settings store its index in the list.
std::optional<SaveFailure> Save(ComponentState& state, SettingsStore& store) {
  device::ConnectionParameters connection = state.connection;
  if (state.host_parts)
    connection.baud_index = device::BaudIndex(connection.baud).value_or(connection.baud_index);
  return SaveSettings(store, {connection, state.terminal, state.window},
                      state.host_parts ? &*state.host_parts : nullptr);
}

}  // namespace

std::optional<SaveFailure> Unload(ComponentState& state, terminal::TerminalCore& core, terminal::Log& log,
                                  SettingsStore& store) {
  log.CloseLog();
  const std::optional<SaveFailure> failure = Save(state, store);
  const bool own_connection = state.device.OperMode == device::operating_mode::kPortLibrary;
  if (!own_connection && !state.device.connected) core.connect.Connect();
  if (own_connection && state.device.connected) core.device.Close();
  // From here on the terminal has no connection; a host's device belongs to the host again.
  state.device.connected = false;
  state.device.gObj.reset();
  state.can_unload = true;
  return failure;
}

namespace {

namespace mode = device::operating_mode;

bool IsHostMode(std::int16_t oper_mode) {
  return oper_mode == mode::kHostByIndex || oper_mode == mode::kHost;
}

// Loads the settings of this run; if one cannot be read, shows a message and throws.
void LoadOrReport(const SettingsStore& store, ComponentState& state, const TerminalOptions& options,
                  CloseWatch& close) {
  window::MessagePrompt prompt(nullptr, &close);
  try {
    LoadSettings(store, {state.connection, state.terminal, state.window}, !IsHostMode(state.device.OperMode));
  } catch (const base::RuntimeError& error) {
    prompt.ShowError(error.what());
    throw;
  }
  if (state.device.OperMode == mode::kPortLibrary) {
    device::ConfirmStoredConnection(state.connection, ComponentFolder(options.Folder), prompt);
  } else if (!IsHostMode(state.device.OperMode)) {
    device::DeriveFromStored(state.connection);
  }
}

// The window is closing, so a failure to save is reported where nobody has to answer.
void UnloadOrReport(ComponentState& state, window::MainWindow& window, SettingsStore& store,
                    CloseWatch& close) {
  const auto failure = Unload(state, window.core(), window.log(), store);
  if (failure) close.Messages().ShowError(texts::NotSaved(*failure));
}

void SaveStateOrReport(StateFile& file, CloseWatch& close) {
  if (const auto failure = file.Save()) close.Messages().ShowError(texts::StateNotSaved(*failure));
}

// Only the user's own terminal restores its windows and offers unsaved lists, not one with separate settings.
bool IsUsersOwn(const ComponentState& state, const TerminalOptions& options) {
  return state.device.OperMode == mode::kPortLibrary && options.SettingsFile.empty();
}

void SaveExtrasOrReport(ExtrasFile& file, const ComponentState& state, CloseWatch& close) {
  if (const auto failure = file.Save(state.terminal.extras))
    close.Messages().ShowError(texts::NotSaved(*failure));
}

// With a separate settings file, the user's extras are neither used nor changed.
std::string ExtrasFileOf(const TerminalOptions& options) {
  return options.SettingsFile.empty() ? UserExtrasFile() : std::string();
}

// Without a window manager there may be no active window.
QWidget* HostWindow() {
  if (QWidget* active = QApplication::activeWindow()) return active;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->isVisible() && (widget->windowType() == Qt::Window || widget->windowType() == Qt::Dialog))
      return widget;
  }
  return nullptr;
}

// In a host's application the terminal is placed over the host's active window. An X server without a window
// manager would put it in the corner.
void CenterOver(const QWidget& host, window::MainWindow& window) {
  const QRect screen = host.screen()->availableGeometry();
  // It will get a frame like the host's.
  QRect rect({}, window.size() + host.frameSize() - host.size());
  rect.moveCenter(host.frameGeometry().center());
  rect.moveRight(std::min(rect.right(), screen.right()));
  rect.moveBottom(std::min(rect.bottom(), screen.bottom()));
  // A position restored from the last time is kept.
  if (!window.testAttribute(Qt::WA_Moved))
    window.move(std::max(rect.left(), screen.left()), std::max(rect.top(), screen.top()));
  // Created after the move, so that the position is that of its frame.
  window.winId();
  window.windowHandle()->setTransientParent(host.windowHandle());
}

// One after the other: dialling takes time and runs timers.
void PressAtStart(window::MainWindow& window, const TerminalOptions& options, const CloseWatch& close) {
  QTimer::singleShot(0, &window,
                     [&window, &close, connect = options.ConnectAtStart, play = options.PlayAtStart] {
                       if (connect) window.PressConnect();
                       if (play && !close.Made()) window.PressPlay();
                     });
}

void ShowModally(window::MainWindow& window, const QWidget* host, const TerminalOptions& options,
                 CloseWatch& close) {
  window.setWindowModality(Qt::ApplicationModal);
  window.setAttribute(Qt::WA_QuitOnClose, false);
  if (host != nullptr) CenterOver(*host, window);
  window.show();
  if (!options.CommandList.empty()) window.OpenCommandFile(options.CommandList);
  PressAtStart(window, options, close);
  close.RunEvents();
}

// Resets what a window's controls show. The last answer and status, the flags of $SILENT and $AUTOLOG, and
// open blocks of a command list live as long as the component.
void ResetForWindow(ComponentState& state) {
  state.device.open_step_status = 0;
  state.terminal.receive = {};
  state.terminal.shown = {};
  state.terminal.options = {};
  state.script.record = {};
}

std::string UnsavedFolder() {
  const auto folder = base::UserStateFolder();
  return folder.empty() ? std::string() : (folder / "Unsaved").string();
}

window::WindowContext ContextOf(ComponentState& state, const TerminalOptions& options,
                                device::PortLibrarySource& library, CloseWatch& close,
                                StateFile& state_file) {
  return {.slices = {state.device, state.connection, state.terminal},
          .script = state.script,
          .settings = state.window,
          .library = library,
          .folder = ComponentFolder(options.Folder),
          .close = &close,
          .own_folder = OwnFolder(),
          .user_folder = base::UserDataFolder(),
          .unsaved = IsUsersOwn(state, options) ? UnsavedFolder() : std::string(),
          .state = &state_file};
}

void SelectDevice(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx) {
  state.device.DevIdx = dev_idx;
  state.device.OperMode = oper_mode;
  const HostParts parts = ReadHostParameters(state.device, state.connection);
  state.host_parts = IsHostMode(oper_mode) ? std::optional(parts) : std::nullopt;
}

}  // namespace

void RunTerminal(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx) {
  Application::CheckThread();
  // A host's event handler could open a second window.
  if (state.window_open) throw base::RuntimeError(base::RuntimeError::Kind::kOther, texts::kAlreadyOpen);
  state.window_open = true;
  const base::ScopeExit no_window([&state] { state.window_open = false; });
  // The host may set others for the next terminal in any call.
  TerminalOptions options = state.options;
  options.ConnectAtStart &= oper_mode == mode::kPortLibrary;
  SelectDevice(state, oper_mode, dev_idx);
  const Application application;
  const window::ImageListAhead images(window::kToolbarImage * qApp->devicePixelRatio());
  const QPointer<QWidget> host_window = HostWindow();
  CloseWatch close(options.CloseDescriptor);
  ResetForWindow(state);
  const auto store = OpenIniStore(options.SettingsFile);
  LoadOrReport(*store, state, options, close);
  state.device.connected = IsHostMode(oper_mode);
  StateFile state_file(IsUsersOwn(state, options) ? UserStateFile() : std::string());
  ExtrasFile extras_file(ExtrasFileOf(options));
  state.terminal.extras = extras_file.Load();
  device::LazyPortLibrary library(OwnFolder());
  window::MainWindow window(ContextOf(state, options, library, close, state_file));
  if (IsHostMode(oper_mode)) window.core().connect.ShowConnected();
  window.Load();
  state.waits = &window.core().waits;
  const base::ScopeExit no_waits([&state] { state.waits = nullptr; });
  window.OnUnload([&] {
    SaveStateOrReport(state_file, close);
    SaveExtrasOrReport(extras_file, state, close);
    UnloadOrReport(state, window, *store, close);
  });
  close.SetWindow(window);
  state.can_unload = false;
  ShowModally(window, host_window, options, close);
  // The event loop was ended while the window was open.
  if (!state.can_unload) window.close();
}

}  // namespace kolvane::component
