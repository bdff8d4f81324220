#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "amplifier/line_handler.h"
#include "amplifier/options.h"
#include "amplifier/stream.h"

namespace kolvane::amplifier {

/// One connection: receives lines and sends the handler's answers with the requested pauses and misbehaviour.
/// It never waits except in Exchange(); its owner calls it when the descriptor or the clock is ready. While
/// an answer is being sent nothing more is received, so memory stays bounded whatever the peer does.
class Connection {
 public:
  using Clock = std::chrono::steady_clock;

  /// `handler` must outlive the connection.
  Connection(std::unique_ptr<Stream> stream, LineHandler& handler, const Behaviour& behaviour);

  int descriptor() const { return stream_->descriptor(); }
  /// The poll(2) events to wait for.
  short Events() const;
  /// When OnTime() is due.
  std::optional<Clock::time_point> Due() const { return due_; }
  /// True once it should be destroyed, which closes it.
  bool Ended() const { return ended_; }

  void OnEvents(short events);
  void OnTime(Clock::time_point now);
  /// Waits in the receive call for a moment and answers what was received; false if that is not possible (any
  /// more) and the owner must poll.
  bool Exchange();

 private:
  enum class Ending { kNone, kOrderly, kReset };

  bool TakesLines() const;
  void Take(const Transfer& received);
  void AnswerLines();
  void Queue();
  void Append();
  void Release(Clock::time_point now);
  void Flush();
  void EndWhenSent();

  std::unique_ptr<Stream> stream_;
  LineHandler& handler_;
  Behaviour behaviour_;
  LineSplitter splitter_;
  Reply reply_;
  std::string out_;
  std::size_t sent_ = 0;
  std::size_t released_ = 0;  // bytes of out_ that may be sent now
  std::optional<Clock::time_point> due_;
  std::uint64_t answers_ = 0;
  Ending ending_ = Ending::kNone;
  bool peer_done_ = false;
  bool ended_ = false;
};

}  // namespace kolvane::amplifier
