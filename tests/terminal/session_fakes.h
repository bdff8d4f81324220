#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "terminal/output.h"

namespace kolvane::terminal {

using Lines = std::vector<std::string>;

/// A log that keeps its lines and records each call. A name in `refused` cannot be opened.
class FakeLog final : public Log {
 public:
  bool IsOpen() const override { return open; }
  void OpenLog(const std::string& name) override {
    calls.push_back("open " + name);
    open = name != refused;
  }
  void CloseLog() override {
    calls.emplace_back("close");
    open = false;
  }
  void WriteLine(std::string_view line) override {
    lines.emplace_back(line);
    calls.push_back("write " + std::string(line));
  }

  std::vector<std::string> lines;
  std::vector<std::string> calls;
  std::string refused = "refused";
  bool open = false;
};

/// Returns `seconds` one after the other; the last one is repeated.
class FakeClock final : public base::Clock {
 public:
  double Seconds() const override {
    const double now = seconds.at(asked);
    if (asked + 1 < seconds.size()) ++asked;
    return now;
  }
  std::vector<double> seconds = {0};
  mutable std::size_t asked = 0;
};

}  // namespace kolvane::terminal
