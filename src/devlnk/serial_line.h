#pragma once

#include <linux/serial.h>

#include <memory>
#include <optional>
#include <string>

#include "base/descriptor.h"
#include "devlnk/serial_settings.h"

namespace kolvane::devlnk {

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
