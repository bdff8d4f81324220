#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>

#include "device/device_state.h"
#include "terminal/exchange.h"

namespace kolvane::terminal {

/// What CommandHistory::Add changed in the list, for the box that shows it.
struct HistoryChange {
  bool inserted = false;      ///< the command became entry 0
  bool dropped_last = false;  ///< the oldest entry was removed to make room
};

/// The commands sent by hand, newest first.
class CommandHistory {
 public:
  static constexpr std::size_t kLimit = 256;

  /// Inserts `command` at the top unless it equals the top entry, ignoring case.
  HistoryChange Add(std::string_view command);

  const std::deque<std::string>& entries() const { return entries_; }

 private:
  std::deque<std::string> entries_;
};

/// The command list as a target for recording sent commands.
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
  /// Applies `change` to the list, selects entry 0 and its whole text, and takes the focus.
  virtual void ShowHistory(const CommandHistory& history, HistoryChange change) = 0;
};

/// Sends the text of the command box on the user's behalf.
class InteractiveSend {
 public:
  InteractiveSend(Exchange& exchange, CommandRecorder& recorder, CommandBox& box)
      : exchange_(exchange), recorder_(recorder), box_(box) {}

  /// Records and exchanges `command` and adds it to the history; an empty one does nothing. A RuntimeError
  /// from Exchange::Run is rethrown after everything else has been done; the window shows it. Returns whether
  /// the command was sent. `command` must outlive the call.
  bool Send(std::string_view command);

  const CommandHistory& history() const { return history_; }

 private:
  Exchange& exchange_;
  CommandRecorder& recorder_;
  CommandBox& box_;
  CommandHistory history_;
};

/// Sends the text of the command box; pasted text may hold several commands, one per line.
class CommandLines {
 public:
  /// `device` decides which characters can be sent. Both must outlive this object.
  CommandLines(InteractiveSend& interactive, const device::DeviceState& device)
      : interactive_(interactive), device_(device) {}

  /// Sends the lines of `text` one after the other, skipping empty ones. Between two lines it calls
  /// `between`, to serve events; calling Send from there does nothing. Stop(), or a command that is not sent,
  /// ends it. Throws RuntimeError, before anything is sent, for a character that cannot be sent, and what
  /// InteractiveSend::Send throws.
  void Send(std::string_view text, const std::function<void()>& between);

  /// Stops before the next line.
  void Stop() { stopped_ = true; }
  bool IsSending() const { return sending_; }

 private:
  InteractiveSend& interactive_;
  const device::DeviceState& device_;
  bool sending_ = false;
  bool stopped_ = false;
};

}  // namespace kolvane::terminal
