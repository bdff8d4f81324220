#pragma once

#include <sys/types.h>

#include <cstdint>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "devlnk/channel.h"
#include "devlnk/input_queue.h"

namespace kolvane::devlnk {

struct PortKind {
  std::int16_t code;
  std::string_view name;
  Opened (*open)(const PortRequest&, Deadline&);
  Status (*availability)();  ///< kNotAvailable if the system lacks the driver of this port kind
};

/// The row of a port code; null for an unknown code.
const PortKind* FindPortKind(std::int16_t code);

/// The one open port, or none, and everything that is the same for each port kind. The virtual functions can
/// be called on a session created by the port library, see NewPortSession.
class PortSession {
 public:
  PortSession() = default;
  virtual ~PortSession();

  static constexpr std::int32_t kFirstTimeoutMs = 5000;

  /// Closes the open port first, even if opening the new one fails.
  Status Open(const PortKind& kind, PortRequest request);
  /// Like Open, by port code; kInvalidArgument for an unknown code.
  virtual Status OpenPort(std::int16_t code, PortRequest request);
  virtual void Close();
  bool is_open() const { return channel_ != nullptr; }

  virtual Status SetTimeout(std::int32_t milliseconds);
  /// Called while Open and the operations below wait. It must not use the session, except bytes_waiting().
  void SetWaitHandler(WaitHandler handler) { handler_ = handler; }
  WaitHandler wait_handler() const { return handler_; }

  /// Applies from the next opening of a GPIB port on. `milliseconds`, not negative, also sets the time-out; 0
  /// means kFirstTimeoutMs.
  void SetGpib(const GpibOptions& options, std::int32_t milliseconds);

  /// The next opening of that port uses `node` instead of the configured one; empty: as configured.
  void SetNode(const PortKind& kind, std::string node);

  // The following need an open port.
  virtual Status Select(std::int16_t address);
  Status SetLine(const PortRequest& request) { return channel_->SetLine(request); }
  /// kNotAvailable if the port kind has no status byte.
  virtual Status ReadStatusByte(std::uint8_t& status_byte);
  virtual Status Write(std::string_view bytes);
  /// Copies the next answer to the start of `buffer` and sets `delivered`; a failure changes neither, and the
  /// bytes stay queued. See QDX_ReadPort.
  Status Read(std::span<char> buffer, unsigned char terminator, std::size_t& delivered);
  /// Appends the next message to `message`; a failure leaves it unchanged, and the bytes stay queued. If the
  /// rule has a gap, the time-out or a connection loss after the first byte ends the message too.
  virtual Status ReadMessage(const MessageRule& rule, std::string& message, MessageEnd& end);
  /// Waits until `count` bytes, at most InputQueue::kLimit, are queued, without consuming them.
  virtual Status AwaitQueued(std::size_t count);
  /// The queued bytes; valid until the next operation.
  std::string_view queued_bytes() const { return {queue_.data(), queue_.size()}; }
  void Drop(std::size_t count) { queue_.Consume(count); }
  std::size_t queued() const { return queue_.size(); }
  /// Unread bytes received; 0 if no port is open.
  std::size_t bytes_waiting() const { return is_open() ? queue_.size() + channel_->Waiting() : 0; }
  /// See Channel::wait_fd.
  int wait_fd() const { return is_open() ? channel_->wait_fd() : -1; }
  /// Returns the number of bytes discarded; at most twice InputQueue::kLimit if more keep coming.
  virtual std::size_t Flush();

 private:
  template <typename Find>
  Status Await(Deadline& deadline, Find find);
  Status AwaitMessage(Deadline& deadline, const MessageRule& rule, Message& message);
  void NoteLoss(Status status);
  void DropChannel();

  std::unique_ptr<Channel> channel_;
  pid_t process_ = 0;  ///< that opened the channel
  InputQueue queue_;
  GpibOptions gpib_;
  std::map<std::int16_t, std::string> nodes_;  ///< for the next opening, by port code
  std::int32_t timeout_ms_ = kFirstTimeoutMs;
  WaitHandler handler_;
  Status loss_ = Status::kOk;  ///< why the connection has ended, for every later transfer
  bool input_ended_ = false;   ///< all bytes received before the loss have been queued
};

/// Exported by libdevlnk.so under the name kNewPortSession for callers of the same build: creates a session
/// besides the one of its C interface. The caller deletes it; null if out of memory.
using NewPortSession = PortSession*();
inline constexpr char kNewPortSession[] = "KOLVANE_NewPortSession";

}  // namespace kolvane::devlnk
