#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/prompt.h"

namespace kolvane::device {

/// Takes down what would have been shown.
struct RecordingPrompt final : base::Prompt {
  void ShowError(std::string_view text) override { errors.emplace_back(text); }
  void ShowMessage(std::string_view text) override { messages.emplace_back(text); }
  std::vector<std::string> errors;
  std::vector<std::string> messages;
};

}  // namespace kolvane::device
