#pragma once

#include <QAction>
#include <QWidget>
#include <functional>
#include <utility>

#include "base/prompt.h"

namespace kolvane::window {

/// Whether the window was asked to close by anybody but its user, or has closed. From then on nobody can be
/// expected to answer a message, and waiting for a device is to be given up.
class CloseRequest {
 public:
  virtual ~CloseRequest() = default;
  virtual bool Made() const = 0;
  /// Receives the messages from then on.
  virtual base::Prompt& Messages() = 0;
};

/// Message boxes above a window, as long as somebody is there to answer them.
class MessagePrompt final : public base::Prompt {
 public:
  /// `close` may be null: then somebody always is.
  explicit MessagePrompt(QWidget* parent, CloseRequest* close = nullptr) : parent_(parent), close_(close) {}

  bool Unattended() const { return close_ != nullptr && close_->Made(); }

  void ShowError(std::string_view text) override;
  void ShowFailure(std::string_view text, std::string_view words) override;
  void ShowListError(std::string_view text, std::string_view error) override;
  void ShowMessage(std::string_view text) override;
  /// Shows an error of a window that is used beside a run or a wait, above that window, and returns at once:
  /// neither is held up.
  void ShowErrorBeside(QWidget* window, std::string_view text);

  /// Runs a window event; shows a run-time error in it as a message box with its description.
  void Guard(const std::function<void()>& event);

  /// When a menu item or a button takes effect.
  enum class While { kIdle, kAlways };
  /// Makes a menu item or a button carry out `event`.
  void OnTrigger(QAction* action, std::function<void()> event, While when = While::kIdle);

  /// How the messages and events of a window depend on what is in progress in it.
  struct Links {
    std::function<bool()> is_waiting = [] { return false; };  ///< events of While::kIdle do nothing then
    std::function<bool()> is_running = [] { return false; };  ///< errors offer to end the run then
    std::function<void()> stop = [] {};                       ///< ends the run
    std::function<void()> before_message = [] {};
    std::function<void()> after_event = [] {};
  };
  void SetLinks(Links links) { links_ = std::move(links); }

  /// While true no messages are shown: the user is closing the window.
  void Dismiss(bool dismissed) { dismissed_ = dismissed; }

 private:
  /// A run can be ended from within the box of an error that does not end it.
  enum class Kind { kMessage, kListError, kError };
  void Show(Kind kind, std::string_view text, std::string_view words = {});

  QWidget* parent_;
  CloseRequest* close_;
  Links links_;
  bool dismissed_ = false;
};

}  // namespace kolvane::window
