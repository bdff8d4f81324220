#pragma once

#include "amplifier/line_handler.h"

namespace kolvane::amplifier {

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
