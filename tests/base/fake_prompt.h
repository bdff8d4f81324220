#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/prompt.h"

namespace kolvane::base {

/// Records what would have been shown; during an error message it runs the test's code.
class FakePrompt final : public Prompt {
 public:
  void ShowError(std::string_view text) override {
    errors.emplace_back(text);
    if (at_error) at_error();
  }
  void ShowMessage(std::string_view text) override { messages.emplace_back(text); }

  std::vector<std::string> errors;
  std::vector<std::string> messages;
  std::function<void()> at_error;
};

}  // namespace kolvane::base
