#include "terminal/interactive_send.h"

#include <exception>
#include <utility>

#include "base/number.h"
#include "base/runtime_error.h"
#include "terminal/response_clock.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

InteractiveSend::InteractiveSend(Session& session, const Options& options, Output& output,
                                 const base::Clock& clock, CommandRecorder& recorder, CommandBox& box,
                                 std::string decimal_sign)
    : session_(session),
      options_(options),
      output_(output),
      clock_(clock),
      recorder_(recorder),
      box_(box),
      decimal_sign_(std::move(decimal_sign)) {}

void InteractiveSend::Send(std::string_view command) {
  if (command.empty()) return;
  std::exception_ptr error;
  try {
    Exchange(command);
  } catch (const base::RuntimeError&) {
    error = std::current_exception();
  }
  box_.ShowHistory(history_, history_.Add(command));
  if (error) std::rethrow_exception(error);
}

void InteractiveSend::Exchange(std::string_view command) {
  if (recorder_.Recording()) recorder_.AddToScript(command);
  // The echo's option decides whether the start is taken, the other one whether a time is shown: with only
  // the latter the time shown is the end itself.
  const float start = options_.show_commands ? SingleMilliseconds(clock_) : 0.0f;
  session_.SendCommand(command);
  if (options_.show_commands) output_.AddLine(command, kCommandColor);
  const PostSendRule rule = session_.PostSendCheck(command);
  if (rule.continues) {
    Answer(start);
  } else if (!rule.message.empty()) {
    output_.AddLine(rule.message);
  }
}

void InteractiveSend::Answer(float start) {
  session_.GetAnswer();
  if (!options_.show_response_times) return;
  const float elapsed = SingleMilliseconds(clock_) - start;
  output_.AppendText(texts::ResponseTime(base::SingleText(elapsed, decimal_sign_)), 1);
}

}  // namespace kolvane::terminal
