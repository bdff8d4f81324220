#pragma once

#include <string_view>

#include "base/prompt.h"

namespace kolvane::component {

/// Standard error of a run without a window: what would be a message box is one line there.
class HeadlessMessages final : public base::Prompt {
 public:
  HeadlessMessages(int descriptor, bool verbose) : descriptor_(descriptor), verbose_(verbose) {}

  void ShowError(std::string_view text) override;
  void ShowMessage(std::string_view text) override { ShowError(text); }
  /// What is worth telling only to who asked for it.
  void Tell(std::string_view text) {
    if (verbose_) ShowError(text);
  }

 private:
  int descriptor_;
  bool verbose_;
};

}  // namespace kolvane::component
