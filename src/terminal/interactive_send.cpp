#include "terminal/interactive_send.h"

#include <exception>

#include "base/runtime_error.h"

namespace kolvane::terminal {

void InteractiveSend::Send(std::string_view command) {
  if (command.empty()) return;
  std::exception_ptr error;
  try {
    if (recorder_.Recording()) recorder_.AddToScript(command);
    exchange_.Run(command, Sender::kUser);
  } catch (const base::RuntimeError&) {
    error = std::current_exception();
  }
  box_.ShowHistory(history_, history_.Add(command));
  if (error) std::rethrow_exception(error);
}

}  // namespace kolvane::terminal
