#include "terminal/connect_commands.h"

#include <utility>

#include "device/device_state.h"
#include "terminal/output.h"

namespace kolvane::terminal {
namespace {

// Sets a flag for as long as it lives.
class Flagged {
 public:
  explicit Flagged(bool& flag) : flag_(flag) { flag_ = true; }
  ~Flagged() { flag_ = false; }
  Flagged(const Flagged&) = delete;
  Flagged& operator=(const Flagged&) = delete;

 private:
  bool& flag_;
};

}  // namespace

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
  const Flagged attempt(connecting_);
  device_.ClearLastError();
  device_.Open();
  return device_.LastError();
}

void ConnectCommands::TryConnect() {
  const device::DeviceError error = Open();
  // Set before the message: it may run the event loop.
  state_.connected = error.code >= 0 && view_.AcceptsConnection();
  if (state_.connected) {
    button_.tool_tip = texts::kDisconnectTip;
  } else if (error.code < 0) {
    prompt_.ShowError(texts::Failure(texts::kConnectFailed, error));
  }
}

void ConnectCommands::TryDisconnect() {
  device_.ClearLastError();
  device_.Close();
  const device::DeviceError error = device_.LastError();
  if (error.code >= 0) {
    state_.connected = false;
  } else {
    prompt_.ShowError(texts::Failure(texts::kDisconnectFailed, error));
  }
  if (!state_.connected) button_.tool_tip = texts::kConnectTip;
}

void ConnectCommands::Press() {
  if (connecting_) return;
  const bool connect = button_.tag == 0;
  connect ? TryConnect() : TryDisconnect();
  if (state_.connected == connect) {
    connect ? TurnButton(1, ConnectButtonState::kConnectedImage, texts::kDisconnectTip)
            : TurnButton(0, ConnectButtonState::kDisconnectedImage, texts::kConnectTip);
    AddLine(connect ? texts::kConnectedWith : texts::kDisconnectedFrom);
  }
  view_.ConnectionChanged();
}

void ConnectCommands::Flush() { FlushInput(device_, output_); }

void ConnectCommands::ShowConnected() {
  TurnButton(0, ConnectButtonState::kConnectedImage, texts::kDisconnectTip);
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

void ConnectCommands::TurnButton(int tag, int image, std::string_view tool_tip) {
  button_.tag = tag;
  button_.image = image;
  button_.tool_tip = tool_tip;
}

void ConnectCommands::AddLine(std::string_view what) {
  output_.AddLine(LineKind::kNotice, texts_.now() + std::string(what) + texts_.description());
}

}  // namespace kolvane::terminal
