#pragma once

#include <string>
#include <vector>

#include "device/dial_listener.h"

namespace kolvane::device {

/// Writes down each step of a dialling.
class RecordingDialListener final : public DialListener {
 public:
  void Dialling(const DialProgress& progress) override {
    const std::string what = progress.command.empty() ? std::to_string(progress.seconds_left) + " s left"
                                                      : "sent " + progress.command;
    steps.push_back(what + ", last '" + progress.reply + "'");
  }

  std::vector<std::string> steps;
};

}  // namespace kolvane::device
