#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "device/waits.h"

namespace kolvane::device {

/// Records each step of dialling and each wait.
class RecordingWaitListener final : public WaitListener {
 public:
  bool Dialling(const DialProgress& progress) override {
    const std::string what = progress.command.empty() ? std::to_string(progress.seconds_left) + " s left"
                                                      : "sent " + progress.command;
    steps.push_back(what + ", last '" + progress.reply + "'");
    return steps.size() < max_steps;
  }
  bool Waiting(Operation operation, double seconds) override {
    waited.push_back({operation, seconds});
    return steps.size() < max_steps;
  }
  void WaitEnded() override { ++ended_waits; }
  void BeforeUnattended() override { ++unattended; }

  struct Wait {
    Operation operation;
    double seconds;
  };
  std::vector<std::string> steps;
  std::vector<Wait> waited;
  int ended_waits = 0;
  int unattended = 0;
  std::size_t max_steps = SIZE_MAX;  ///< how many steps it waits for
};

}  // namespace kolvane::device
