#pragma once

#include <cstdint>
#include <string>

#include "amplifier/line_splitter.h"
#include "amplifier/transmission.h"

namespace kolvane::amplifier {

/// What an instrument says to one line. The buffer is used again for the next line.
struct Reply {
  enum class Kind {
    kNone,   // nothing goes out
    kLine,   // `bytes`, then the terminator
    kBytes,  // `bytes` alone: the reader knows how many
  };
  Kind kind = Kind::kNone;
  std::string bytes;
  std::uint32_t wait_ms = 0;
};

/// An instrument as its connections see it.
class LineHandler {
 public:
  virtual ~LineHandler() = default;
  /// Overwrites every field of `reply`.
  virtual void Handle(const Line& line, Reply& reply) = 0;
  /// How the answer to the line just handled, and those to come, are sent.
  virtual const Transmission& transmission() const = 0;
};

}  // namespace kolvane::amplifier
