#include "terminal/connect_commands.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "base/descriptor.h"
#include "base/scope_exit.h"
#include "device/device_state.h"
#include "terminal/output.h"

namespace kolvane::terminal {

ConnectCommands::ConnectCommands(device::Device& device, device::DeviceState& state, Output& output,
                                 base::Prompt& prompt, ConnectionView& view, ConnectionTexts texts)
    : device_(device),
      state_(state),
      output_(output),
      prompt_(prompt),
      view_(view),
      texts_(std::move(texts)) {}

void ConnectCommands::Connect() {
  if (connecting_) return;
  TryConnect();
  view_.ConnectionChanged();
}

void ConnectCommands::Disconnect() {
  TryDisconnect();
  view_.ConnectionChanged();
}

device::DeviceError ConnectCommands::Open() {
  connecting_ = true;
  const base::ScopeExit ended([this] { connecting_ = false; });
  view_.ConnectionEnding();
  device_.ClearLastError();
  device_.Open();
  return device_.LastError();
}

void ConnectCommands::TryConnect() {
  const device::DeviceError error = Open();
  // Set before the message: it may run the event loop.
  state_.connected = error.code >= 0 && view_.AcceptsConnection();
  if (state_.connected) {
    ClearState();
    // The connection counts as open although the modem has closed the line.
    if (state_.modem_word) output_.ShowState(StateKind::kModem, texts::LineClosed(*state_.modem_word));
    button_.tool_tip = texts::kDisconnectTip;
  } else if (error.code < 0) {
    ShowFailure(texts::kConnectFailed, error);
  }
}

void ConnectCommands::ShowFailure(std::string_view what, const device::DeviceError& error) {
  output_.ShowState(StateKind::kWords, error.words.empty() ? "" : texts::Words(error, 0));
  prompt_.ShowFailure(texts::Failure(what, error), error.words);
}

// States shown for the previous connection do not apply to the new one.
void ConnectCommands::ClearState() {
  lost_ = false;
  for (const StateKind kind : {StateKind::kLost, StateKind::kModem, StateKind::kBytes, StateKind::kWords})
    output_.ShowState(kind, {});
}

bool ConnectCommands::Probe() {
  const std::int32_t before = state_.last_result;
  Bytes buffer;
  const std::size_t received = device_.ReadBinary({}, 1, buffer);
  const device::DeviceError error = device_.LastError();
  state_.last_result = before;
  if (error.code >= 0) {
    state_.put_back.append(reinterpret_cast<const char*>(buffer.data()), std::min<std::size_t>(received, 1));
    return received > 0;
  }
  if (device::EndsConnection(error.code)) NoteLoss();
  return false;
}

void ConnectCommands::CheckForLoss() {
  const int descriptor = device_.WaitDescriptor();
  if (descriptor >= 0 && base::IsReadable(descriptor) && device_.BytesWaiting() <= 0) Probe();
}

void ConnectCommands::CheckForHangUp() {
  const int descriptor = device_.WaitDescriptor();
  if (descriptor >= 0 && base::HasHungUp(descriptor)) NoteLoss();
}

void ConnectCommands::NoteLoss() {
  if (!state_.connected || lost_) return;
  lost_ = true;
  output_.ShowState(StateKind::kLost, texts::kConnectionLost);
}

namespace {

constexpr std::int32_t kFirstPauseMs = 500;

}  // namespace

device::DeviceError ConnectCommands::OpenAgain() {
  const double begin = reconnect_.clock->Seconds();
  for (std::int32_t pause = kFirstPauseMs;; pause *= 2) {
    device::DeviceError error = Open();
    const double left = *reconnect_.timeout_ms - (reconnect_.clock->Seconds() - begin) * 1000;
    if (error.code >= 0 || error.code == device::device_status::kGivenUp || left < 1) return error;
    device_.Pause(static_cast<std::int32_t>(std::min<double>(pause, left)));
    if (device::DeviceError given_up = device_.LastError(); given_up.code < 0) return given_up;
  }
}

void ConnectCommands::Reconnect() {
  if (connecting_) return;
  view_.ConnectionEnding();
  device_.Close();
  state_.connected = false;
  const device::DeviceError error = OpenAgain();
  if (error.code >= 0 && view_.AcceptsConnection()) {
    state_.connected = true;
    ClearState();
    TurnButton(true);
    AddLine(texts::kConnectedWith);
  } else {
    TurnButton(false);
    if (error.code < 0) ShowFailure(texts::kConnectFailed, error);
  }
  view_.ConnectionChanged();
}

void ConnectCommands::TryDisconnect() {
  view_.ConnectionEnding();
  device_.ClearLastError();
  device_.Close();
  const device::DeviceError error = device_.LastError();
  if (error.code >= 0) {
    state_.connected = false;
    ClearState();
  } else {
    ShowFailure(texts::kDisconnectFailed, error);
  }
  if (!state_.connected) button_.tool_tip = texts::kConnectTip;
}

void ConnectCommands::Press() {
  const bool restores = lost_ && reconnect_.wanted != nullptr && *reconnect_.wanted;
  restores ? Reconnect() : Toggle();
}

void ConnectCommands::Toggle() {
  if (connecting_) return;
  const bool connect = button_.tag == 0;
  connect ? TryConnect() : TryDisconnect();
  if (state_.connected == connect) {
    TurnButton(connect);
    AddLine(connect ? texts::kConnectedWith : texts::kDisconnectedFrom);
  }
  view_.ConnectionChanged();
}

void ConnectCommands::Flush() { FlushInput(device_, output_); }

void ConnectCommands::ShowConnected() {
  TurnButton(true);
  button_.tag = 0;
  view_.ConnectionChanged();
}

ConnectionMenu ConnectCommands::Menu() const {
  return {.configure = !state_.connected && state_.OperMode == device::operating_mode::kPortLibrary,
          .connect = !state_.connected,
          .disconnect = state_.connected};
}

std::string ConnectCommands::StatusText() const {
  return state_.connected ? texts_.description() : std::string(texts::kNotConnected);
}

void ConnectCommands::TurnButton(bool connected) {
  button_ = connected ? ConnectButtonState{1, ConnectButtonState::kConnectedImage,
                                           std::string(texts::kDisconnectTip)}
                      : ConnectButtonState{};
}

void ConnectCommands::AddLine(std::string_view what) {
  output_.AddLine(LineKind::kNotice, texts_.now() + std::string(what) + texts_.description());
}

}  // namespace kolvane::terminal
