#pragma once

#include <sys/types.h>

#include <cstdint>

#include "base/loopback.h"

namespace kolvane::soak {

/// An instrument on a loopback port, in its own process, that answers each line with something chosen at
/// random: a value, text, a block, half of one, any bytes, many lines, nothing, or the end of the connection.
/// From time to time it sends lines that nobody asked for.
class WhimInstrument {
 public:
  explicit WhimInstrument(std::uint32_t seed);
  ~WhimInstrument();
  WhimInstrument(const WhimInstrument&) = delete;
  WhimInstrument& operator=(const WhimInstrument&) = delete;

  std::uint16_t port() const { return listener_.port(); }

 private:
  const base::Listener listener_;
  pid_t child_ = -1;
};

}  // namespace kolvane::soak
