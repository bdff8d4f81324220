#pragma once

#include <QEventLoop>
#include <QSocketNotifier>
#include <memory>

#include "headless/messages.h"
#include "window/main_window.h"
#include "window/message_prompt.h"

namespace kolvane::component {

/// Closes the terminal once a descriptor (TerminalOptions::CloseDescriptor; negative: none) becomes readable,
/// be it while a message stands before the window. Messages go to standard error then.
class CloseWatch final : public window::CloseRequest {
 public:
  explicit CloseWatch(int descriptor);

  /// Asks the descriptor itself, so that it is seen where no events are run.
  bool Made() const override;
  base::Prompt& Messages() override { return messages_; }

  /// From now on it is this window that is closed, at once where the request has come already.
  void SetWindow(window::MainWindow& window);

  /// Runs events until the window has closed, or somebody ends the thread's event loops; counts as a request
  /// for what comes after.
  void RunEvents();

 private:
  void CloseAll();

  int descriptor_;
  std::unique_ptr<QSocketNotifier> notifier_;
  window::MainWindow* window_ = nullptr;
  QEventLoop* loop_ = nullptr;  // while it runs
  bool came_ = false;
  headless::Messages messages_;
};

}  // namespace kolvane::component
