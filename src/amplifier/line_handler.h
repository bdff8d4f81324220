#pragma once

#include <cstdint>
#include <string>

#include "amplifier/stream.h"

namespace kolvane::amplifier {

/// An instrument's answer to one line. The buffer is reused for the next line.
struct Reply {
  enum class Kind {
    kNone,   // nothing is sent
    kLine,   // `bytes`, then the terminator
    kBytes,  // only `bytes`: the reader knows the count
  };
  Kind kind = Kind::kNone;
  std::string bytes;
  std::uint32_t wait_ms = 0;
};

/// The interface of an instrument to its connections.
class LineHandler {
 public:
  virtual ~LineHandler() = default;
  /// Overwrites every field of `reply`.
  virtual void Handle(const Line& line, Reply& reply) = 0;
  /// How the answer to the line just handled, and later answers, are sent.
  virtual const Transmission& transmission() const = 0;
};

/// Sends every line back; answers "?" to one that is too long.
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
