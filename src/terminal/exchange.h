#pragma once

#include <cstdint>
#include <optional>
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

/// The outcome of one exchange.
struct ExchangeResult {
  Sent sent = Sent::kWritten;
  std::int32_t write_status = 0;  ///< negative if writing failed
  bool ended_by_word = false;     ///< a word in the command ended the exchange
  bool answer_due = true;         ///< false then, and for a command without "?" if only queries are answered
  bool answered = false;

  bool Failed() const { return sent != Sent::kWritten || (answer_due && !answered); }
};

/// Notified of each exchange that has ended, whether or not it is shown.
class ExchangeListener {
 public:
  virtual ~ExchangeListener() = default;
  /// If an answer was due, TerminalState::last_answer is that of this exchange. `command` is empty if an
  /// answer was read without a command.
  virtual void ExchangeEnded(std::string_view command, const ExchangeResult& result) = 0;
};

/// One command and its answer: send, echo, check for a word that ends the exchange, read, time. The command
/// line, the command list and runs without a window all exchange through this.
class Exchange {
 public:
  /// `decimal_sign` is used in the response times.
  Exchange(Session& session, device::Waits& waits, const Options& options, Output& output,
           const base::Clock& clock, std::string decimal_sign);

  /// Counts as one operation: once the user gives up, the rest of it is given up too.
  /// Throws what Session::GetAnswer throws, but only after the command has been sent and echoed.
  ExchangeResult Run(std::string_view command, Sender sender);

  /// Reads one answer without sending anything; connects first, as a command does. Shows a response time
  /// only to the user, not in a list.
  ExchangeResult Read(Sender sender);

  /// Discards the bytes received so far and says so.
  void Flush() { session_.Flush(); }

  /// How many exchanges have ended.
  std::uint64_t ended() const { return ended_; }

  /// One listener at a time; it must outlive this object or be removed with null.
  void Listen(ExchangeListener* listener) { listener_ = listener; }

 private:
  ExchangeResult Ended(std::string_view command, const ExchangeResult& result);
  ExchangeResult Perform(std::string_view command, Sender sender);
  void GetAnswer(ExchangeResult& result, std::optional<double> start, Sender sender);
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
  std::uint64_t ended_ = 0;
};

}  // namespace kolvane::terminal
