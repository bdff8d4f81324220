#pragma once

#include <QEventLoop>
#include <QPointer>
#include <QSocketNotifier>
#include <QWidget>
#include <memory>

#include "headless/messages.h"
#include "window/main_window.h"
#include "window/message_prompt.h"

namespace kolvane::component {

/// Closes the terminal once a descriptor (TerminalOptions::CloseDescriptor; negative: none) becomes readable,
/// even while a message is open. Messages then go to standard error.
class CloseWatch final : public window::CloseRequest {
 public:
  explicit CloseWatch(int descriptor);

  /// Polls the descriptor itself, so that this works without an event loop.
  bool Made() const override;
  base::Prompt& Messages() override { return messages_; }

  /// Sets the window to close; closes it at once if the request has already been made.
  void SetWindow(window::MainWindow& window);

  /// Runs events until the window has closed or the thread's event loops are ended. After that Made() is
  /// true.
  void RunEvents();

 private:
  void CloseAll();

  int descriptor_;
  QPointer<QWidget> host_modal_;  // above which the terminal opens
  std::unique_ptr<QSocketNotifier> notifier_;
  window::MainWindow* window_ = nullptr;
  QEventLoop* loop_ = nullptr;  // while it runs
  bool requested_ = false;
  headless::Messages messages_;
};

}  // namespace kolvane::component
