#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "terminal/exchange.h"

namespace kolvane::terminal {

/// What CommandHistory::Add did to the list, for whoever shows it.
struct HistoryChange {
  bool inserted = false;      ///< the command became entry 0
  bool dropped_last = false;  ///< the oldest entry made room for it
};

/// The commands sent by hand, newest first.
class CommandHistory {
 public:
  static constexpr std::size_t kLimit = 256;

  /// Puts `command` on top unless the entry there is the same without regard to case.
  HistoryChange Add(std::string_view command);

  const std::deque<std::string>& entries() const { return entries_; }

 private:
  std::deque<std::string> entries_;
};

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

/// Sends what stands in the command box: one command a line, where several were pasted into it.
class CommandLines {
 public:
  /// `utf8`: every character can be sent.
  explicit CommandLines(InteractiveSend& interactive, const bool* utf8 = nullptr)
      : interactive_(interactive), utf8_(utf8) {}

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
  const bool* utf8_;
  bool sending_ = false;
  bool stopped_ = false;
};

}  // namespace kolvane::terminal
