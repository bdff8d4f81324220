#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/prompt.h"
#include "device/device.h"
#include "device/device_state.h"
#include "device/waits.h"
#include "terminal/output.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

/// What TB_CONNECT shows. The tag decides what the next press does; the menu commands leave it alone.
struct ConnectButtonState {
  static constexpr int kConnectedImage = 20;
  static constexpr int kDisconnectedImage = 21;

  int tag = 0;  ///< 0: a press connects, otherwise it disconnects
  int image = kDisconnectedImage;
  std::string tool_tip = std::string(texts::kConnectTip);
};

/// Which items of the menu mnuCon are enabled.
struct ConnectionMenu {
  bool configure = false;
  bool connect = false;
  bool disconnect = false;
  bool operator==(const ConnectionMenu&) const = default;
};

/// Told that button or status text may have changed; the window shows both again. While a modem is dialled it
/// is told how that goes, in the status text's place.
class ConnectionView : public device::WaitListener {
 public:
  /// Asked once a connection has been opened; false, and the user has been told why: it counts as failed.
  virtual bool AcceptsConnection() { return true; }
  virtual void ConnectionChanged() = 0;
  /// The port is about to be closed, or opened again: its descriptor goes.
  virtual void ConnectionEnding() {}
};

/// The texts that lines and status bar are made of; both are UTF-8.
struct ConnectionTexts {
  std::function<std::string()> description;                      ///< of the current connection; may be empty
  std::function<std::string()> now = base::CurrentDateTimeText;  ///< date and time of a line
};

/// The commands of the menu "Verbindung" and of the buttons TB_CONNECT and TB_FLUSH. Failures are shown by
/// the prompt and nowhere else.
class ConnectCommands {
 public:
  ConnectCommands(device::Device& device, device::DeviceState& state, Output& output, base::Prompt& prompt,
                  ConnectionView& view, ConnectionTexts texts);

  /// mnuConnect and mnuDisconnect: they change the connected flag and the button's tool tip only. An attempt
  /// to connect is not entered again: whatever asks for another one meanwhile is refused.
  void Connect();
  void Disconnect();
  /// While an attempt to connect is on the stack.
  bool connecting() const { return connecting_; }

  /// TB_CONNECT: connects or disconnects as its tag says. When that succeeded, the button changes over and a
  /// line in the pane says so.
  void Press();

  /// TB_FLUSH.
  void Flush();

  /// For a port that is ready although no byte is counted: reads one. A byte that came in between is put
  /// back, and true returned; an end of the connection is noted. How the last operation ended stays as it
  /// was.
  bool Probe();
  /// The same where the port's descriptor says that it is ready; costs nothing else.
  void LookForLoss();

  /// The connection has ended by itself. All else stays as it was until somebody connects.
  void NoteLoss();
  bool lost() const { return lost_; }

  /// How a lost connection comes back: `wanted` says whether at all, for `timeout_ms` it is tried. All of it
  /// must outlive this.
  void ReconnectAfterLoss(const bool& wanted, const std::int32_t& timeout_ms, const base::Clock& clock) {
    reconnect_ = {&wanted, &timeout_ms, &clock};
  }
  /// Tries to connect again, after pauses that double, and shows the failure where that is in vain.
  void Reconnect();

  /// The button's look on a device that the host has opened already. The tag stays 0, so the first press
  /// connects once more.
  void ShowConnected();

  const ConnectButtonState& button() const { return button_; }
  ConnectionMenu Menu() const;
  /// For the first status bar.
  std::string StatusText() const;

 private:
  void TryConnect();
  void TryDisconnect();
  device::DeviceError Open();
  device::DeviceError OpenAgain();
  void ShowFailure(std::string_view what, const device::DeviceError& error);
  void ClearState();
  void TurnButton(int tag, int image, std::string_view tool_tip);
  void AddLine(std::string_view what);

  device::Device& device_;
  device::DeviceState& state_;
  Output& output_;
  base::Prompt& prompt_;
  ConnectionView& view_;
  ConnectionTexts texts_;
  ConnectButtonState button_;
  bool connecting_ = false;
  bool lost_ = false;
  struct {
    const bool* wanted = nullptr;
    const std::int32_t* timeout_ms = nullptr;
    const base::Clock* clock = nullptr;
  } reconnect_;
};

}  // namespace kolvane::terminal
