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

/// Flow control of a serial line: none, the characters XOFF and XON, or the lines RTS and CTS.
enum class FlowControl { kNone, kXonXoff, kRtsCts };

/// The result of a read: bytes, or the failure that ended it, or neither if the time was up.
struct Received {
  std::size_t bytes = 0;
  Status status = Status::kOk;
  bool ends_message = false;  ///< the instrument marked the end of its message after these bytes (USB, GPIB)
};

struct PortRequest;

/// An open connection to an instrument, one class per port kind. The destructor closes it.
class Channel {
 public:
  virtual ~Channel() = default;

  /// For a copy in a forked process: true if from now on the destructor only closes descriptors, false if it
  /// would disturb the original in any case.
  virtual bool Abandon() { return false; }

  /// Sets the bus address, 0 to 31, for the following transfers. Port kinds without addresses ignore it.
  virtual Status Select(std::int16_t /*address*/, Deadline& /*deadline*/) { return Status::kOk; }

  /// Reads available bytes into `room` (never empty); waits until the deadline for the first byte.
  virtual Received Read(std::span<char> room, Deadline& deadline) = 0;

  /// Writes all of `bytes` or fails, kWriteTimeout included; a part may have been sent then.
  virtual Status Write(std::string_view bytes, Deadline& deadline) = 0;

  /// Discards unread input that the system still holds and Read cannot fetch.
  virtual void DiscardInput(Deadline& /*deadline*/) {}

  /// The status byte, read out of band (USB, GPIB).
  virtual Status ReadStatusByte(std::uint8_t& /*status_byte*/, Deadline& /*deadline*/) {
    return Status::kNotAvailable;
  }

  /// Changes the rate, parity, data and stop bits, and the flow control, of a serial line.
  virtual Status SetLine(const PortRequest& /*request*/) { return Status::kInvalidArgument; }

  /// Bytes received but not yet fetched by Read, as far as the system reports.
  virtual std::size_t Waiting() const { return 0; }
  /// Becomes readable when bytes arrive or the connection ends; negative: none.
  virtual int wait_fd() const { return -1; }
};

/// The arguments of QDX_OpenPort.
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

/// `channel` is set exactly if the status is kOk.
struct Opened {
  Status status = Status::kOk;
  std::unique_ptr<Channel> channel;
};

}  // namespace kolvane::devlnk
