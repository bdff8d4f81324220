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

/// State of TB_CONNECT. The tag decides what the next press does; the menu commands do not change it.
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

/// Notified when button or status text may have changed; the window then updates both. While a modem is
/// dialled it receives the progress, shown instead of the status text.
class ConnectionView : public device::WaitListener {
 public:
  /// Called after connecting. False: the user has been told why, and the attempt has failed.
  virtual bool AcceptsConnection() { return true; }
  virtual void ConnectionChanged() = 0;
  /// The port is about to be closed or opened again; its descriptor becomes invalid.
  virtual void ConnectionEnding() {}
};

/// The texts used in lines and in the status bar; both are UTF-8.
struct ConnectionTexts {
  std::function<std::string()> description;                      ///< of the current connection; may be empty
  std::function<std::string()> now = base::CurrentDateTimeText;  ///< date and time of a line
};

/// The commands of the menu "Verbindung" and of the buttons TB_CONNECT and TB_FLUSH. Failures are shown only
/// by the prompt.
class ConnectCommands {
 public:
  ConnectCommands(device::Device& device, device::DeviceState& state, Output& output, base::Prompt& prompt,
                  ConnectionView& view, ConnectionTexts texts);

  /// mnuConnect and mnuDisconnect: they change only the connected flag and the button's tool tip. Any other
  /// attempt to connect made during an attempt is refused.
  void Connect();
  void Disconnect();
  /// While an attempt to connect is on the stack.
  bool connecting() const { return connecting_; }

  /// TB_CONNECT: restores a lost connection if that is wanted, otherwise as Toggle.
  void Press();
  /// Connects or disconnects, as the button's tag says. On success the button changes state and a line in the
  /// pane says so.
  void Toggle();

  /// TB_FLUSH.
  void Flush();

  /// For a port that is ready although no byte is counted: reads one byte. A byte that arrived in between is
  /// put back and true returned; an end of the connection is noted. The status of the last operation does not
  /// change.
  bool Probe();
  /// Probes only if the port's descriptor is ready and no byte is counted.
  void CheckForLoss();
  /// Notes an end of the connection even if there are unread bytes, which stay unread.
  void CheckForHangUp();

  /// The connection has ended by itself. Nothing else changes until the next connect.
  void NoteLoss();
  bool lost() const { return lost_; }

  /// Sets how a lost connection is restored: only if `wanted`, trying for `timeout_ms`. All arguments must
  /// outlive this object.
  void ReconnectAfterLoss(const bool& wanted, const std::int32_t& timeout_ms, const base::Clock& clock) {
    reconnect_ = {&wanted, &timeout_ms, &clock};
  }
  /// Tries to connect again, with pauses that double, and shows the failure if no attempt succeeds.
  void Reconnect();

  /// Shows the button as connected for a device that the host has already opened. The tag stays 0, so the
  /// first press connects once more.
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
  void TurnButton(bool connected);
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
