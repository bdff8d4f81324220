#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "kolvane/Variant.h"

namespace kolvane::device {

/// A count as the operations take it; what is negative counts as 0.
constexpr std::size_t SizeOf(std::int32_t count) { return static_cast<std::size_t>(std::max(count, 0)); }

/// How the last operation ended: negative code = failure; the description is the host's text or the decimal
/// code.
struct DeviceError {
  std::int16_t code = 0;
  std::string description;
  std::string words = {};  ///< what a failure's code means, German; empty where nobody knows
};

/// The nine operations on the instrument. None throws; a failure is fetched with LastError. Texts are UTF-8.
class Device {
 public:
  virtual ~Device() = default;

  virtual void Open() = 0;
  virtual void Close() = 0;

  /// Sends `command` followed by `terminator` (empty, one character or CR LF).
  virtual void Write(std::string_view command, std::string_view terminator, std::int16_t extra) = 0;

  /// Text answer, up to `terminator` or `count` characters. `answer` comes back without the spaces that
  /// filled the rest of the buffer; with an empty terminator in port-library mode `count` bytes go to
  /// `buffer` instead.
  virtual void ReadText(std::string_view terminator, std::int32_t count, std::string& answer,
                        Bytes& buffer) = 0;

  /// `count` bytes into the start of `buffer`, which is not made smaller. Waits for all of them, or for
  /// `terminator`, which is one of them then. Returns how many came, 0 for a failure.
  virtual std::size_t ReadBinary(std::string_view terminator, std::int32_t count, Bytes& buffer) = 0;

  virtual void SetTimeout(std::int32_t milliseconds) = 0;
  virtual DeviceError LastError() = 0;
  virtual void ClearLastError() = 0;

  /// The number of bytes discarded, or nothing where the operation does not apply (not connected, test mode,
  /// no device); only with a number is the user told.
  virtual std::optional<std::int32_t> FlushInput() = 0;

  virtual void ActivateInterpreter() = 0;

  /// Bytes that have come and have not been read, as far as is known.
  virtual std::int32_t BytesWaiting() { return 0; }
  /// Becomes readable when something comes or the connection ends, good until it is closed; negative: there
  /// is none.
  virtual int WaitDescriptor() { return -1; }
  /// Returns after that many milliseconds; a failure where waiting was given up.
  virtual void Pause(std::int32_t /*milliseconds*/) {}
};

}  // namespace kolvane::device
