#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "devlnk/channel.h"
#include "devlnk/input_queue.h"
#include "devlnk/port_kinds.h"

namespace kolvane::devlnk {

/// The one port that is open, or none, and everything that is the same for each kind of port.
class PortSession {
 public:
  static constexpr std::int32_t kFirstTimeoutMs = 5000;

  /// Closes the port that was open, whatever comes of the new one.
  Status Open(const PortKind& kind, PortRequest request);
  void Close();
  bool is_open() const { return channel_ != nullptr; }

  Status SetTimeout(std::int32_t milliseconds);

  /// Holds from the next opening of a GPIB port on. `milliseconds`, not negative, also set the time-out; 0 is
  /// the one that holds at first.
  void SetGpib(const GpibOptions& options, std::int32_t milliseconds);

  // The following need an open port.
  Status Select(std::int16_t address);
  Status Write(std::string_view bytes);
  /// Copies the next answer to the start of `buffer` and sets `delivered`; a failure leaves both alone, and
  /// the bytes queued. See QDX_ReadPort.
  Status Read(std::span<char> buffer, unsigned char terminator, std::size_t& delivered);
  std::size_t queued() const { return queue_.size(); }
  /// The number of bytes thrown away; at most twice InputQueue::kLimit, if more keep coming.
  std::size_t Flush();

 private:
  Status Await(std::size_t count, unsigned char terminator, Answer& answer);
  void NoteLoss(Status status);

  std::unique_ptr<Channel> channel_;
  InputQueue queue_;
  GpibOptions gpib_;
  std::int32_t timeout_ms_ = kFirstTimeoutMs;
  Status loss_ = Status::kOk;  ///< why the connection has ended, for every later transfer
  bool input_ended_ = false;   ///< what came before the loss has been taken over in full
};

}  // namespace kolvane::devlnk
