#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "device/port_library.h"
#include "device/waits.h"

namespace kolvane::device {

/// The commands of a dial script, whose lines are separated by CR LF; empty lines are skipped.
std::vector<std::string> ModemCommands(const std::string& script);

/// Whether a modem's word means that no connection will be made.
bool IsRefusal(std::string_view word);

/// Dials with the modem on an open serial port: sends each command with CR after it and reads its reply; then
/// reads replies until one, the last command's own included, contains "CONNECT" in any case. Blocks for at
/// most `timeout_s` seconds, and one read, after the last command.
class ModemDialler {
 public:
  ModemDialler(PortLibrary& library, const base::Clock& clock, Waits& waits)
      : library_(library), clock_(clock), waits_(waits) {}

  /// 0 once connected, -1 if the time is over, it was given up or the library cannot even wait. `commands`
  /// must not be empty.
  [[nodiscard]] std::int32_t Dial(const std::vector<std::string>& commands, std::int32_t timeout_s);

  /// The modem's last word; empty if there was none.
  const std::string& last_word() const { return last_word_; }

 private:
  void Tell(const std::string& command, double seconds_left);
  std::int32_t ReadReply();
  std::int32_t ReadReplyPaced();

  PortLibrary& library_;
  const base::Clock& clock_;
  Waits& waits_;
  std::string reply_;
  std::string last_word_;  ///< of the replies to the current command; UTF-8
};

}  // namespace kolvane::device
