#pragma once

#include <cstdint>
#include <string>

#include "amplifier/stream.h"

namespace kolvane::amplifier {

/// What an instrument says to one line. The buffer is used again for the next line.
struct Reply {
  enum class Kind {
    kNone,   // nothing goes out
    kLine,   // `bytes`, then the terminator
    kBytes,  // only `bytes`: the reader knows how many
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

/// Sends every line back; an overlong one is answered by "?".
class Echo final : public LineHandler {
 public:
  explicit Echo(const Transmission& transmission) : transmission_(transmission) {}

  void Handle(const Line& line, Reply& reply) override {
    reply.kind = Reply::Kind::kLine;
    reply.wait_ms = 0;
    reply.bytes.assign(line.too_long ? "?" : line.text);
  }
  const Transmission& transmission() const override { return transmission_; }

 private:
  Transmission transmission_;
};

}  // namespace kolvane::amplifier
