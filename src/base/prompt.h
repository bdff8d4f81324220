#pragma once

#include <string_view>

namespace kolvane::base {

/// The way to the user: a message box in the window, a line on standard error without one. Texts are German,
/// UTF-8.
class Prompt {
 public:
  virtual ~Prompt() = default;
  /// Shows `text` with the critical icon and returns when the user has taken note of it.
  virtual void ShowError(std::string_view text) = 0;
  /// The same, and what else is known of the failure; `words` may be empty.
  virtual void ShowFailure(std::string_view text, std::string_view /*words*/) { ShowError(text); }
  /// Shows `text` without an icon.
  virtual void ShowMessage(std::string_view text) = 0;
};

}  // namespace kolvane::base
