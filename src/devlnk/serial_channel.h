#pragma once

// The kernel's own declarations: only they accept any rate as a number. They exclude <termios.h>.
#include <asm/termbits.h>
#include <linux/serial.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "base/descriptor.h"
#include "devlnk/channel.h"

namespace kolvane::devlnk {

enum class Parity { kNone, kEven, kOdd };

struct SerialParameters {
  std::uint32_t baud = 9600;
  Parity parity = Parity::kNone;
  bool seven_data_bits = false;
  bool two_stop_bits = false;
  FlowControl flow = FlowControl::kNone;
};

/// How long the first read of an answer waits in the call; the driver counts in tenths of a second.
inline constexpr std::int32_t kSerialSliceMs = 100;

/// From the arguments of QDX_OpenPort; nothing if the rate is below 1 or the parity text is not "n", "e", "o"
/// or empty. Data bits other than 7 mean 8, stop bits other than 2 mean 1: callers pass other numbers until
/// the user has chosen some.
std::optional<SerialParameters> SerialParametersFrom(const PortRequest& request);

/// The line's settings: raw, reads end after kSerialSliceMs. Only the hang-up on close and the line
/// discipline are kept from `before`.
termios2 SettingsFor(const SerialParameters& parameters, const termios2& before);

/// The driver drives the bus with RTS while it sends and does not receive then, so that there is no echo.
/// Delays and all else stay unchanged.
serial_rs485 Rs485SettingsFor(const serial_rs485& before);

/// Whether the rate reported by the driver is close enough to the requested one to communicate.
bool RateMatches(std::uint32_t wanted, std::uint32_t reported);

/// The unsent output of a line.
class OutputQueue {
 public:
  virtual ~OutputQueue() = default;
  virtual int Bytes() = 0;
  virtual void Wait(std::int32_t milliseconds) = 0;
  virtual void Drop() = 0;
};

/// Waits for unsent output as long as a line of that rate needs for it. Drops the rest once nothing has been
/// sent for a second, or after 10 seconds.
void FinishOutput(OutputQueue& queue, std::uint32_t baud);

/// A serial line reserved for this process; the destructor calls FinishOutput and restores the previous
/// settings.
class SerialLine {
 public:
  /// Returns kOk and sets `line`, or returns why the line is not available.
  static Status Open(const std::string& node, std::unique_ptr<SerialLine>& line);
  SerialLine(const SerialLine&) = delete;
  SerialLine& operator=(const SerialLine&) = delete;
  ~SerialLine();
  /// The destructor then only closes the descriptors.
  void Abandon() { abandoned_ = true; }

  /// kInvalidArgument if the driver does not support the rate. A repeated call runs FinishOutput first.
  Status Apply(const SerialParameters& parameters);
  /// Makes the driver switch the direction of the bus if it can; other adapters switch by themselves.
  void UseRs485();
  void RaiseModemLines();
  void DiscardInput();

  /// The same line twice: reads of the first wait as set up, the second never waits.
  int waiting_fd() const { return waiting_.get(); }
  int prompt_fd() const { return prompt_.get(); }

 private:
  SerialLine(base::Descriptor prompt, base::Descriptor waiting, const termios2& before);

  base::Descriptor prompt_;
  base::Descriptor waiting_;
  termios2 before_;
  std::uint32_t baud_ = 0;
  bool exclusive_before_ = false;
  bool abandoned_ = false;
  std::optional<serial_rs485> rs485_before_;
};

/// Port kinds "COM" and "RS485": text is the parity letter. Bytes received before are discarded.
Opened OpenSerial(const PortRequest& request, Deadline& deadline);
Opened OpenRs485(const PortRequest& request, Deadline& deadline);

/// Opens a line by its node.
Opened OpenSerialNode(const std::string& node, const SerialParameters& parameters);

}  // namespace kolvane::devlnk
