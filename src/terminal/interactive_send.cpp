#include "terminal/interactive_send.h"

#include <exception>

#include "base/runtime_error.h"

namespace kolvane::terminal {

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

}  // namespace kolvane::terminal
