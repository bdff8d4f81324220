#pragma once

#include <string_view>

#include "terminal/command_history.h"
#include "terminal/exchange.h"

namespace kolvane::terminal {

/// The command list, as far as sent commands are recorded into it.
class CommandRecorder {
 public:
  virtual ~CommandRecorder() = default;
  /// Whether TB_RECORD is down.
  virtual bool Recording() const = 0;
  virtual void AddToScript(std::string_view command) = 0;
};

/// The command box cmbCommand.
class CommandBox {
 public:
  virtual ~CommandBox() = default;
  /// Takes `change` over into the list, selects entry 0 and its whole text, and takes the focus.
  virtual void ShowHistory(const CommandHistory& history, HistoryChange change) = 0;
};

/// What happens when the user sends the text of the command box.
class InteractiveSend {
 public:
  InteractiveSend(Exchange& exchange, CommandRecorder& recorder, CommandBox& box)
      : exchange_(exchange), recorder_(recorder), box_(box) {}

  /// Records and exchanges `command` and puts it into the history; an empty one does nothing. A RuntimeError
  /// of Exchange::Run comes through when all the rest has been done; the window shows it. Returns whether the
  /// command went out. `command` must outlive the call.
  bool Send(std::string_view command);

  const CommandHistory& history() const { return history_; }

 private:
  Exchange& exchange_;
  CommandRecorder& recorder_;
  CommandBox& box_;
  CommandHistory history_;
};

}  // namespace kolvane::terminal
