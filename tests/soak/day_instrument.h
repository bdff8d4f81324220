#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "base/loopback.h"

namespace kolvane::soak {

/// What the instrument has to tell while it runs; in memory that both processes see.
struct DayTally {
  std::atomic<std::int64_t> lines = 0;     ///< numbered lines, counted before they are sent
  std::atomic<std::int64_t> said = 0;      ///< commands SAY whose lines are counted
  std::atomic<std::int64_t> commands = 0;  ///< received
  std::atomic<std::int64_t> unknown = 0;   ///< of them not understood
  std::atomic<std::int64_t> ends = 0;      ///< connections that it has ended
  std::atomic<bool> silent = false;        ///< the terminal waits in vain, until it gives up
};

/// An instrument on a loopback port, in a process of its own, that does all that instruments do to a terminal
/// in the course of a day. Lines that it sends are "0000000001,+12.345678", numbered from 1 over all
/// connections.
///   MSV? 1   answers
///   SAY 12   answers, and says so many lines that nobody asked for
///   MUTE     does not answer
///   HALF     sends half an answer, and the other half once GiveUp was called
///   DROP     answers and ends the connection
///   CUT      sends half an answer, which does not count, and resets the connection
class DayInstrument {
 public:
  DayInstrument();
  ~DayInstrument();
  DayInstrument(const DayInstrument&) = delete;
  DayInstrument& operator=(const DayInstrument&) = delete;

  std::uint16_t port() const { return listener_.port(); }
  const DayTally& tally() const { return *tally_; }
  /// The terminal waits no longer.
  void GiveUp();

 private:
  DayTally* tally_;
  const base::Listener listener_;
  base::Descriptor given_up_;
  pid_t child_ = -1;
};

/// The line of that number, without its end.
std::string NumberedLine(std::int64_t number);

}  // namespace kolvane::soak
