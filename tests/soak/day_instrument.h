#pragma once

#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <string>

#include "base/loopback.h"

namespace kolvane::soak {

/// What the instrument reports while it runs, in memory shared by both processes.
struct DayTally {
  std::atomic<std::int64_t> lines = 0;         ///< numbered lines, counted before they are sent
  std::atomic<std::int64_t> say_commands = 0;  ///< SAY commands whose lines are counted
  std::atomic<std::int64_t> commands = 0;      ///< received
  std::atomic<std::int64_t> unknown = 0;       ///< unknown ones among them
  std::atomic<std::int64_t> ends = 0;          ///< connections ended by the instrument
  std::atomic<bool> silent = false;            ///< no answer follows; the terminal waits until it gives up
};

/// An instrument on a loopback port, in its own process, that does everything that instruments do to a
/// terminal in the course of a day. The lines that it sends are "0000000001,+12.345678", numbered from 1 over
/// all connections.
///   MSV? 1   answers
///   SAY 12   answers, and sends that many unasked lines
///   MUTE     does not answer
///   HALF     sends half an answer, and the other half after GiveUp
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
  /// The terminal has stopped waiting.
  void GiveUp();

 private:
  DayTally* tally_;
  const base::Listener listener_;
  base::Descriptor given_up_;
  pid_t child_ = -1;
};

/// The line with that number, without its line end.
std::string NumberedLine(std::int64_t number);

}  // namespace kolvane::soak
