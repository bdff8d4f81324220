#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

#include "amplifier/instrument.h"

namespace kolvane::amplifier {

class FakeClock final : public base::Clock {
 public:
  double Seconds() const override { return now; }
  double now = 1000;
};

/// An instrument with a clock that the test moves; answers are compared as sent, without terminator.
class InstrumentTest : public testing::Test {
 protected:
  explicit InstrumentTest(Instrument::Setup setup = {}) : instrument_(clock_, std::move(setup)) {}

  /// "(none)" if no answer is sent.
  std::string Ask(std::string_view command) {
    instrument_.Handle(Line{command}, reply_);
    return reply_.kind == Reply::Kind::kNone ? "(none)" : reply_.bytes;
  }
  /// Refused with "?" for that reason.
  testing::AssertionResult Refuses(std::string_view command, Refusal reason) {
    const std::string answer = Ask(command);
    if (answer != "?") return testing::AssertionFailure() << command << " answered " << answer;
    const std::string error = Ask("ERR?");
    if (error.starts_with(std::to_string(static_cast<int>(reason)) + ",")) return testing::AssertionSuccess();
    return testing::AssertionFailure() << command << " was refused for " << error;
  }
  testing::AssertionResult BadParameter(std::string_view command) {
    return Refuses(command, Refusal::kBadParameter);
  }
  testing::AssertionResult WrongCount(std::string_view command) {
    return Refuses(command, Refusal::kWrongParameterCount);
  }

  FakeClock clock_;
  Instrument instrument_;
  Reply reply_;
};

}  // namespace kolvane::amplifier
