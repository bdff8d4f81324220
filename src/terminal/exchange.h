#pragma once

#include <string>
#include <string_view>

#include "base/clock.h"
#include "device/waits.h"
#include "terminal/output.h"
#include "terminal/session.h"
#include "terminal/terminal_state.h"

namespace kolvane::terminal {

/// Who sends a command; it decides how the response time is measured.
enum class Sender {
  kUser,  ///< single precision; the start is only taken while commands are shown
  kList   ///< double precision
};

/// How one exchange went.
struct ExchangeResult {
  Sent sent = Sent::kWritten;
  bool ended_by_word = false;  ///< a word in the command ended the exchange
  bool answer_due = true;      ///< false then, and where a command that is no query has no answer
  bool answered = false;

  bool Failed() const { return sent != Sent::kWritten || (answer_due && !answered); }
};

/// Is told of each exchange that has ended, whatever is shown of it.
class ExchangeListener {
 public:
  virtual ~ExchangeListener() = default;
  /// TerminalState::last_answer is this exchange's where an answer was due. `command` is empty where an
  /// answer was read without one.
  virtual void ExchangeEnded(std::string_view command, const ExchangeResult& result) = 0;
};

/// One command and its answer: send, echo, check for a word that ends the exchange, read, time. The command
/// line, the command list and runs without a window all exchange through this.
class Exchange {
 public:
  /// `decimal_sign` stands in the response times.
  Exchange(Session& session, device::Waits& waits, const Options& options, Output& output,
           const base::Clock& clock, std::string decimal_sign);

  /// To whoever waits it is one operation: given up once, what is left of it is given up too.
  /// Throws what Session::GetAnswer throws, once the command has been sent and echoed.
  ExchangeResult Run(std::string_view command, Sender sender);

  /// Reads one answer without sending anything; connects first, as a command does.
  ExchangeResult Read(Sender sender);

  /// Discards what has come and says so.
  void Flush() { session_.Flush(); }

  /// One at a time, which outlives this object or is taken back with null.
  void Listen(ExchangeListener* listener) { listener_ = listener; }

 private:
  ExchangeResult Ended(std::string_view command, const ExchangeResult& result);
  ExchangeResult Carry(std::string_view command, Sender sender);
  void GetAnswer(ExchangeResult& result, double start, Sender sender);
  double Start(Sender sender) const;
  double Milliseconds(Sender sender) const;
  void ShowTime(double start, Sender sender);

  Session& session_;
  device::Waits& waits_;
  const Options& options_;
  Output& output_;
  const base::Clock& clock_;
  std::string decimal_sign_;
  ExchangeListener* listener_ = nullptr;
};

}  // namespace kolvane::terminal
