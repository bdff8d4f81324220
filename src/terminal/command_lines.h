#pragma once

#include <functional>
#include <string_view>

#include "terminal/interactive_send.h"

namespace kolvane::terminal {

/// Sends what stands in the command box: one command a line, where several were pasted into it.
class CommandLines {
 public:
  explicit CommandLines(InteractiveSend& interactive) : interactive_(interactive) {}

  /// Sends the lines of `text` one after the other, empty ones left out. Between two of them it calls
  /// `between`, the time to serve events; a call of Send from there does nothing. Stop(), and a command that
  /// does not go out, end it. Throws RuntimeError, before anything is sent, for a character that
  /// Windows-1252 lacks, and what InteractiveSend::Send throws.
  void Send(std::string_view text, const std::function<void()>& between);

  /// No further line is sent.
  void Stop() { stopped_ = true; }
  bool IsSending() const { return sending_; }

 private:
  InteractiveSend& interactive_;
  bool sending_ = false;
  bool stopped_ = false;
};

}  // namespace kolvane::terminal
