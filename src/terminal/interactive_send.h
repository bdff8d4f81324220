#pragma once

#include <string>
#include <string_view>

#include "base/clock.h"
#include "terminal/command_history.h"
#include "terminal/output.h"
#include "terminal/session.h"
#include "terminal/terminal_state.h"

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
  /// `decimal_sign` stands in the response times.
  InteractiveSend(Session& session, const Options& options, Output& output, const base::Clock& clock,
                  CommandRecorder& recorder, CommandBox& box, std::string decimal_sign);

  /// Records, sends, echoes and checks `command`, reads and times its answer and puts it into the history; an
  /// empty command does nothing. A RuntimeError of Session::GetAnswer comes through when all the rest has
  /// been done; the window shows it. `command` must outlive the call.
  void Send(std::string_view command);

  const CommandHistory& history() const { return history_; }

 private:
  void Exchange(std::string_view command);
  void Answer(float start);

  Session& session_;
  const Options& options_;
  Output& output_;
  const base::Clock& clock_;
  CommandRecorder& recorder_;
  CommandBox& box_;
  std::string decimal_sign_;
  CommandHistory history_;
};

}  // namespace kolvane::terminal
