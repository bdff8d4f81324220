#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "devlnk/deadline.h"
#include "devlnk/gpib_library.h"
#include "devlnk/node_names.h"
#include "devlnk/status.h"

namespace kolvane::devlnk {

/// How the two sides of a serial line hold each other up: not at all, by the characters XOFF and XON, or by
/// the lines RTS and CTS.
enum class FlowControl { kNone, kXonXoff, kRtsCts };

/// What a read brought: bytes, or the failure that ended it, or neither when time was up.
struct Received {
  std::size_t bytes = 0;
  Status status = Status::kOk;
  bool ends_message = false;  ///< the instrument said that its message ends with these bytes (USB, GPIB)
};

struct PortRequest;

/// An open connection to an instrument, one class for each kind of port. The destructor closes it.
class Channel {
 public:
  virtual ~Channel() = default;

  /// The following transfers speak to this bus address, 0 to 31. Kinds of port without addresses ignore it.
  virtual Status Select(std::int16_t /*address*/, Deadline& /*deadline*/) { return Status::kOk; }

  /// Takes what is there, at most the room given (never empty); waits until the deadline for the first byte.
  virtual Received Read(std::span<char> room, Deadline& deadline) = 0;

  /// All of `bytes` or a failure, kWriteTimeout included; a part may have gone out then.
  virtual Status Write(std::string_view bytes, Deadline& deadline) = 0;

  /// Throws away what the system still holds unread, beyond what Read can fetch.
  virtual void DiscardInput(Deadline& /*deadline*/) {}

  /// The status byte, asked of the instrument beside its messages (USB, GPIB).
  virtual Status ReadStatusByte(std::uint8_t& /*status_byte*/, Deadline& /*deadline*/) {
    return Status::kNotAvailable;
  }

  /// Changes the rate, parity, data and stop bits, and the flow control, of a serial line.
  virtual Status SetLine(const PortRequest& /*request*/) { return Status::kInvalidArgument; }

  /// What has come and Read has not fetched yet, as far as the system reports.
  virtual std::size_t Waiting() const { return 0; }
  /// Becomes readable when something comes, or the connection ends; negative: there is none.
  virtual int wait_fd() const { return -1; }
};

/// What QDX_OpenPort was given.
struct PortRequest {
  std::string_view name;  ///< of the port, such as COM1
  std::int32_t baud = 0;
  std::string_view text;
  std::int32_t data_bits = 0;
  std::int16_t stop_bits = 0;
  GpibOptions gpib = {};
  FlowControl flow = FlowControl::kNone;  ///< of a serial line
  std::string node = {};                  ///< device node or board number; empty: as configured for the name
};

inline std::string NodeOf(const PortRequest& request) {
  return request.node.empty() ? NodeFor(request.name) : request.node;
}

/// The channel is there exactly when the status is kOk.
struct Opened {
  Status status = Status::kOk;
  std::unique_ptr<Channel> channel;
};

}  // namespace kolvane::devlnk
