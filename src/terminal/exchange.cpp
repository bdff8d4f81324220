#include "terminal/exchange.h"

#include <utility>

#include "base/number.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

Exchange::Exchange(Session& session, device::Waits& waits, const Options& options, Output& output,
                   const base::Clock& clock, std::string decimal_sign)
    : session_(session),
      waits_(waits),
      options_(options),
      output_(output),
      clock_(clock),
      decimal_sign_(std::move(decimal_sign)) {}

[[gnu::hot]] ExchangeResult Exchange::Run(std::string_view command, Sender sender) {
  const device::Waits::Scope scope(waits_, device::Operation::kAnswer);
  return Ended(command, Perform(command, sender));
}

ExchangeResult Exchange::Read(Sender sender) {
  const device::Waits::Scope scope(waits_, device::Operation::kAnswer);
  ExchangeResult result;
  // A $ row has no response time.
  std::optional<double> start;
  if (sender == Sender::kUser) start = Start(sender);
  result.answer_due = session_.EnsureConnected();
  if (result.answer_due) {
    GetAnswer(result, start, sender);
  } else {
    result.sent = Sent::kNotConnected;
  }
  return Ended({}, result);
}

[[gnu::hot]] ExchangeResult Exchange::Ended(std::string_view command, const ExchangeResult& result) {
  ++ended_;
  if (listener_ != nullptr) listener_->ExchangeEnded(command, result);
  return result;
}

[[gnu::hot]] ExchangeResult Exchange::Perform(std::string_view command, Sender sender) {
  ExchangeResult result;
  const double start = Start(sender);
  result.sent = session_.SendCommand(command);
  result.write_status = session_.write_status();
  if (options_.show_commands) output_.AddLine(LineKind::kCommand, command);
  const PostSendRule rule = session_.PostSendCheck(command);
  if (!rule.continues) {
    result.answer_due = false;
    result.ended_by_word = !rule.message.empty();
    if (result.ended_by_word) {
      output_.AddLine(LineKind::kNotice, rule.message);
      output_.Remark(LineKind::kNotice, rule.message);
    }
    session_.ReportBytesWaiting();
    return result;
  }
  GetAnswer(result, start, sender);
  return result;
}

[[gnu::hot]] void Exchange::GetAnswer(ExchangeResult& result, std::optional<double> start, Sender sender) {
  result.answered = session_.GetAnswer();
  if (start && options_.show_response_times) ShowTime(*start, sender);
  session_.ReportBytesWaiting();
}

// For the user, one option decides whether the start is taken, another whether a time is shown: with only the
// latter, the time shown is the end time itself.
[[gnu::hot]] double Exchange::Start(Sender sender) const {
  const bool taken = sender == Sender::kUser ? options_.show_commands : options_.show_response_times;
  return taken ? Milliseconds(sender) : 0;
}

// Single precision makes the user's times coarser the longer the clock has run.
double Exchange::Milliseconds(Sender sender) const {
  if (sender == Sender::kList) return clock_.Seconds() * 1000.0;
  return static_cast<double>(static_cast<float>(clock_.Seconds()) * 1000.0f);
}

void Exchange::ShowTime(double start, Sender sender) {
  const double elapsed = Milliseconds(sender) - start;
  const bool user = sender == Sender::kUser;
  const std::string text = user ? base::SingleText(static_cast<float>(elapsed), decimal_sign_)
                                : base::ShortText(elapsed, decimal_sign_);
  output_.AppendText(LineKind::kTime, texts::ResponseTime(text), user ? 1 : 0);
}

}  // namespace kolvane::terminal
