#include "terminal/interactive_send.h"

#include <exception>

#include "base/encoding.h"
#include "base/runtime_error.h"
#include "base/scope_exit.h"
#include "base/text.h"
#include "device/sendable.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

HistoryChange CommandHistory::Add(std::string_view command) {
  if (!entries_.empty() && base::EqualsNoCase(entries_.front(), command)) return {};
  entries_.emplace_front(command);
  if (entries_.size() <= kLimit) return {.inserted = true};
  entries_.pop_back();
  return {.inserted = true, .dropped_last = true};
}

bool InteractiveSend::Send(std::string_view command) {
  if (command.empty()) return false;
  bool sent = true;
  std::exception_ptr error;
  try {
    if (recorder_.Recording()) recorder_.AddToScript(command);
    sent = exchange_.Run(command, Sender::kUser).sent == Sent::kWritten;
  } catch (const base::RuntimeError&) {
    error = std::current_exception();
  }
  box_.ShowHistory(history_, history_.Add(command));
  if (error) std::rethrow_exception(error);
  return sent;
}

void CommandLines::Send(std::string_view text, const std::function<void()>& between) {
  if (sending_) return;
  if (const auto character = device::UnsendableCharacter(device_, text); !character.empty())
    throw base::RuntimeError(base::RuntimeError::Kind::kInvalidArgument, texts::NotSendable(character));
  sending_ = true;
  const base::ScopeExit ended([this] { sending_ = false; });
  stopped_ = false;
  while (!text.empty() && !stopped_) {
    const std::string_view line = base::TakeLine(text);
    if (line.empty()) continue;
    if (!interactive_.Send(line)) return;
    if (!text.empty()) between();
  }
}

}  // namespace kolvane::terminal
