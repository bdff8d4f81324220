#pragma once

#include <sys/types.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <string>

#include "base/loopback.h"

namespace kolvane::soak {

/// What the instrument reports while it runs, in memory shared by both processes.
struct Tally {
  std::atomic<std::int64_t> commands = 0;
  std::atomic<std::int64_t> garbled = 0;  ///< commands other than the expected one
  /// Microseconds on the monotonic clock at which each tenth of the expected commands had been received.
  std::array<std::atomic<std::int64_t>, 11> tenths{};
};

/// An instrument on a loopback port, in its own process, that numbers its answers: lines of changing length
/// with a byte beyond ASCII, some of them sent in two pieces. It writes a copy of what it sends.
class NumberingInstrument {
 public:
  static constexpr char kCommand[] = "MSV? 1";

  /// Expects `expected` commands and copies its answers to `copy`.
  NumberingInstrument(std::int64_t expected, const std::string& copy);
  ~NumberingInstrument();
  NumberingInstrument(const NumberingInstrument&) = delete;
  NumberingInstrument& operator=(const NumberingInstrument&) = delete;

  std::uint16_t port() const { return listener_.port(); }
  const Tally& tally() const { return *tally_; }

  /// Returns once the connection is closed and the copy complete.
  void AwaitEnd();

 private:
  Tally* tally_;
  const base::Listener listener_;
  pid_t child_ = -1;
};

}  // namespace kolvane::soak
