#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "device/modem_dialler.h"

namespace kolvane::device {

/// Writes down each step of a dialling.
class RecordingDialListener final : public DialListener {
 public:
  void Dialling(const DialProgress& progress) override {
    const std::string what = progress.command.empty() ? std::to_string(progress.seconds_left) + " s left"
                                                      : "sent " + progress.command;
    steps.push_back(what + ", last '" + progress.reply + "'");
  }
  bool DiallingGivenUp() const override { return steps.size() >= patience; }

  std::vector<std::string> steps;
  std::size_t patience = SIZE_MAX;  ///< how many steps it waits for
};

}  // namespace kolvane::device
