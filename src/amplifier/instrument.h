#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "amplifier/command.h"
#include "amplifier/line_handler.h"
#include "amplifier/state.h"
#include "base/clock.h"

namespace kolvane::amplifier {

/// The measuring amplifier: takes commands and returns answers, without any I/O. Its answers depend only on
/// the commands, the seed and the clock. docs/amplifier.md describes the command set.
class Instrument final : public LineHandler {
 public:
  struct Setup {
    std::uint64_t seed = 1;
    Transmission transmission = {};
    std::vector<std::string> files = {};  // contents that FILE? returns
  };

  /// `clock` must outlive the instrument.
  Instrument(const base::Clock& clock, Setup setup);

  void Handle(const Line& line, Reply& reply) override;
  const Transmission& transmission() const override { return state_.transmission; }

 private:
  Refusal Run(const Line& line, Reply& reply);

  State state_;
};

}  // namespace kolvane::amplifier
