#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "kolvane/Variant.h"

namespace kolvane::device {

/// Converts a count for the operations; a negative one counts as 0.
constexpr std::size_t SizeOf(std::int32_t count) { return static_cast<std::size_t>(std::max(count, 0)); }

/// The result of the last operation: a negative code is a failure; the description is the host's text or the
/// decimal code.
struct DeviceError {
  std::int16_t code = 0;
  std::string description;
  std::string words = {};  ///< the meaning of a failure's code, German; empty if unknown
};

/// The nine operations on the instrument. None throws; LastError reports a failure. Texts are UTF-8.
class Device {
 public:
  virtual ~Device() = default;

  virtual void Open() = 0;
  virtual void Close() = 0;

  /// Sends `command` followed by `terminator` (empty, one character or CR LF).
  virtual void Write(std::string_view command, std::string_view terminator, std::int16_t extra) = 0;

  /// Reads a text answer, up to `terminator` or `count` characters. `answer` is returned without trailing
  /// spaces; with an empty terminator in port-library mode `count` bytes go to `buffer` instead. A UTF-8
  /// character that `count` cuts is kept in DeviceState::put_back.
  virtual void ReadText(std::string_view terminator, std::int32_t count, std::string& answer,
                        Bytes& buffer) = 0;

  /// Reads `count` bytes to the start of `buffer`, which never shrinks. Waits for all of them or for
  /// `terminator`, which is then included. Returns the number of bytes received, 0 for a failure.
  virtual std::size_t ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) = 0;

  virtual void SetTimeout(std::int32_t milliseconds) = 0;
  virtual DeviceError LastError() = 0;
  virtual void ClearLastError() = 0;

  /// The number of bytes discarded, which the user is told, or nothing if the operation does not apply (not
  /// connected, test mode, no device).
  virtual std::optional<std::int32_t> FlushInput() = 0;

  virtual void ActivateInterpreter() = 0;

  /// Unread bytes received, as far as known.
  virtual std::int32_t BytesWaiting() { return 0; }
  /// Becomes readable when bytes arrive or the connection ends; valid until the connection is closed;
  /// negative: none.
  virtual int WaitDescriptor() { return -1; }
  /// Returns after `milliseconds`; a failure if the wait was given up.
  virtual void Pause(std::int32_t /*milliseconds*/) {}
};

}  // namespace kolvane::device
