#pragma once

#include <string_view>

namespace kolvane::base {

/// Shows messages to the user: a message box in the window, otherwise a line on standard error. Texts are
/// German, UTF-8.
class Prompt {
 public:
  virtual ~Prompt() = default;
  /// Shows `text` with the critical icon and returns once the user has confirmed it.
  virtual void ShowError(std::string_view text) = 0;
  /// Like ShowError, with further information about the failure; `words` may be empty.
  virtual void ShowFailure(std::string_view text, std::string_view /*words*/) { ShowError(text); }
  /// Like ShowError, for an error that itself ends the running list: `text` names the row, `error` does not.
  virtual void ShowListError(std::string_view text, std::string_view /*error*/) { ShowError(text); }
  /// Shows `text` without an icon.
  virtual void ShowMessage(std::string_view text) = 0;
};

}  // namespace kolvane::base
