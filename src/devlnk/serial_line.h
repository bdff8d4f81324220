#pragma once

// The kernel's own declarations: only they carry every rate as a number. They exclude <termios.h>.
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

/// What the first read of an answer waits inside the call; the driver counts in tenths of a second.
inline constexpr std::int32_t kSerialSliceMs = 100;

/// From what QDX_OpenPort was given; nothing where the rate is below 1 or the parity text is none of "n",
/// "e", "o" and empty. Data bits other than 7 mean 8, stop bits other than 2 mean 1: callers hold other
/// numbers until the user has chosen some.
std::optional<SerialParameters> SerialParametersFrom(const PortRequest& request);

/// The line's settings: raw, reads that end after kSerialSliceMs. Of `before` only
/// the hang-up on close and the line discipline stay.
termios2 SettingsFor(const SerialParameters& parameters, const termios2& before);

/// The driver drives the bus with RTS while it sends and is deaf meanwhile, so that nobody hears himself.
/// Delays and all else stay as they are.
serial_rs485 Rs485SettingsFor(const serial_rs485& before);

/// Whether the rate that the driver reports is near enough to the rate asked for to be understood.
bool RateMatches(std::uint32_t wanted, std::uint32_t reported);

/// What a line still has to send.
class OutputQueue {
 public:
  virtual ~OutputQueue() = default;
  virtual int Bytes() = 0;
  virtual void Wait(std::int32_t milliseconds) = 0;
  virtual void Drop() = 0;
};

/// Gives what is still to be sent the time that a line of that rate needs for it. Drops the rest once nothing
/// has left for a second, or after 10 seconds.
void FinishOutput(OutputQueue& queue, std::uint32_t baud);

/// A serial line held for this process only; the destructor gives it back with the settings it had, after
/// FinishOutput.
class SerialLine {
 public:
  /// kOk, or why the line is not available; `line` is set in the first case.
  static Status Open(const std::string& node, std::unique_ptr<SerialLine>& line);
  SerialLine(const SerialLine&) = delete;
  SerialLine& operator=(const SerialLine&) = delete;
  ~SerialLine();

  /// kInvalidArgument when the driver cannot do the rate. After FinishOutput, where it was applied before.
  Status Apply(const SerialParameters& parameters);
  /// Makes the driver switch the direction of the bus where it can; adapters without this do so by
  /// themselves.
  void UseRs485();
  void RaiseModemLines();
  void DiscardInput();

  /// The same line twice: reads of the first wait as the settings say, nothing ever waits on the second.
  int waiting_fd() const { return waiting_.get(); }
  int prompt_fd() const { return prompt_.get(); }

 private:
  SerialLine(base::Descriptor prompt, base::Descriptor waiting, const termios2& before);

  base::Descriptor prompt_;
  base::Descriptor waiting_;
  termios2 before_;
  std::uint32_t baud_ = 0;
  bool exclusive_before_ = false;
  std::optional<serial_rs485> rs485_before_;
};

}  // namespace kolvane::devlnk
