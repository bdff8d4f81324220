#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>

#include "base/loopback.h"
#include "devlnk/devlnk.h"
#include "devlnk/status.h"

namespace kolvane::devlnk {

/// The instrument's side of a connection, one class for each kind of port.
class Partner {
 public:
  virtual ~Partner() = default;

  /// Opens the library's port towards this partner; the status of QDX_OpenPort.
  virtual std::int32_t Open() = 0;
  /// Ends the connection in the orderly way of its kind.
  virtual void HangUp() = 0;
  /// The status of a transfer after HangUp.
  virtual Status loss() const = 0;
  /// Returns when what was sent can be read at the library's side.
  virtual void AwaitArrival() {}

  /// Sends all of it, waiting for room.
  void Send(std::string_view bytes);
  /// Waits for exactly `count` bytes.
  std::string Receive(std::size_t count);
  int fd() const { return fd_; }

 protected:
  void CloseFd();

  int fd_ = -1;
};

std::unique_ptr<Partner> MakeTcp4();
std::unique_ptr<Partner> MakeTcp6();
std::unique_ptr<Partner> MakeCom();
std::unique_ptr<Partner> MakeRs485();
/// A USB adapter with a serial line, found by its serial number.
std::unique_ptr<Partner> MakeUsbLine();

/// Sends one byte after the other with a gap between them, until the text or the partner ends.
class Drip {
 public:
  Drip(Partner& partner, std::string text, int gap_ms);
  ~Drip() { thread_.join(); }

 private:
  std::thread thread_;
};

}  // namespace kolvane::devlnk
