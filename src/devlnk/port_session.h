#pragma once

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
  Status (*availability)();  ///< kNotAvailable where the system lacks what drives this kind of port
};

/// The row of a port code; null for a code that stands for no port.
const PortKind* FindPortKind(std::int16_t code);

/// The one port that is open, or none, and everything that is the same for each kind of port. What is virtual
/// can be called on a session of the port library's, see NewPortSession.
class PortSession {
 public:
  PortSession() = default;
  virtual ~PortSession();

  static constexpr std::int32_t kFirstTimeoutMs = 5000;

  /// Closes the port that was open, whatever comes of the new one.
  Status Open(const PortKind& kind, PortRequest request);
  /// The same by its code; kInvalidArgument where none has it.
  virtual Status OpenPort(std::int16_t code, PortRequest request);
  virtual void Close();
  bool is_open() const { return channel_ != nullptr; }

  virtual Status SetTimeout(std::int32_t milliseconds);
  /// Called while the operations below, and Open, wait. It must not use the session, but for bytes_waiting().
  void SetWaitHandler(WaitHandler handler) { handler_ = handler; }
  WaitHandler wait_handler() const { return handler_; }

  /// Holds from the next opening of a GPIB port on. `milliseconds`, not negative, also set the time-out; 0 is
  /// the one that holds at first.
  void SetGpib(const GpibOptions& options, std::int32_t milliseconds);

  /// The next opening of that kind takes `node` in place of the configured one; empty: as configured.
  void SetNode(const PortKind& kind, std::string node);

  // The following need an open port.
  virtual Status Select(std::int16_t address);
  Status SetLine(const PortRequest& request) { return channel_->SetLine(request); }
  /// kNotAvailable where the kind of port has none.
  virtual Status ReadStatusByte(std::uint8_t& status_byte);
  virtual Status Write(std::string_view bytes);
  /// Copies the next answer to the start of `buffer` and sets `delivered`; a failure leaves both alone, and
  /// the bytes queued. See QDX_ReadPort.
  Status Read(std::span<char> buffer, unsigned char terminator, std::size_t& delivered);
  /// Appends the next message to `message`; a failure leaves that alone, and the bytes queued. A gap that
  /// the rule counts ends at the loss of the connection too, once something has come.
  virtual Status ReadMessage(const MessageRule& rule, std::string& message, MessageEnd& end);
  /// Waits until so many bytes, at most InputQueue::kLimit, are queued, and takes none.
  virtual Status AwaitQueued(std::size_t count);
  /// What is queued; valid until the next operation.
  std::string_view queued_bytes() const { return {queue_.data(), queue_.size()}; }
  void Drop(std::size_t count) { queue_.Consume(count); }
  std::size_t queued() const { return queue_.size(); }
  /// What has come and has not been read; 0 where no port is open.
  std::size_t bytes_waiting() const { return is_open() ? queue_.size() + channel_->Waiting() : 0; }
  /// See Channel::wait_fd.
  int wait_fd() const { return is_open() ? channel_->wait_fd() : -1; }
  /// The number of bytes thrown away; at most twice InputQueue::kLimit, if more keep coming.
  virtual std::size_t Flush();

 private:
  template <typename Find>
  Status Await(Deadline& deadline, Find find);
  Status AwaitMessage(Deadline& deadline, const MessageRule& rule, Message& message);
  void NoteLoss(Status status);

  std::unique_ptr<Channel> channel_;
  InputQueue queue_;
  GpibOptions gpib_;
  std::map<std::int16_t, std::string> nodes_;  ///< for the next opening, by port code
  std::int32_t timeout_ms_ = kFirstTimeoutMs;
  WaitHandler handler_;
  Status loss_ = Status::kOk;  ///< why the connection has ended, for every later transfer
  bool input_ended_ = false;   ///< what came before the loss has been taken over in full
};

/// What libdevlnk.so exports by the name kNewPortSession for callers of the same build: sessions beside the
/// one of its C interface. The caller deletes it; null without memory.
using NewPortSession = PortSession*();
inline constexpr char kNewPortSession[] = "KOLVANE_NewPortSession";

}  // namespace kolvane::devlnk
