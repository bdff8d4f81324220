#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "amplifier/options.h"
#include "amplifier/replay.h"
#include "amplifier/stream.h"
#include "amplifier/tcp.h"

namespace kolvane::amplifier {

/// An instrument that answers as recorded in a transcript: its conversations in order, one connection after
/// the other on TCP, all of them in one session on a pseudo terminal.
class ReplayServer {
 public:
  /// Throws std::system_error if the port or the pty cannot be opened, std::runtime_error with a one-line
  /// English text if the file cannot be read or is not a transcript, ReadingStopped as Server does.
  explicit ReplayServer(const Options& options, int stop = -1);

  /// The port listened on; 0 without TCP.
  std::uint16_t Port() const { return listener_ ? listener_->Port() : std::uint16_t{0}; }

  /// Serves until the transcript is complete, until something differs, or until `stop` becomes readable.
  /// Returns the first difference after the file's name and line, empty if there is none. A connection
  /// without any data is ignored if the terminal is to send first.
  std::string Run(int stop);

 private:
  using Clock = Replay::Clock;

  bool IsPty() const { return !pty_link_.empty(); }
  bool Played() const { return next_ == conversations_.size() && !replay_; }
  void StartConversation(std::unique_ptr<Stream> stream);
  std::optional<Clock::time_point> Due() const;
  bool Wait(int stop);
  void Receive();
  void Send();
  void EndConnection();
  bool IsInstrumentDone() const;
  void EndByItself();

  std::string file_;
  bool recorded_times_;
  std::vector<Conversation> conversations_;
  std::size_t next_ = 0;
  std::optional<TcpListener> listener_;
  std::unique_ptr<Stream> stream_;
  std::optional<Replay> replay_;
  std::string pty_link_;  // of a pseudo terminal, which has no connections
  std::string out_;
  std::optional<Clock::time_point> retry_;  // when to try again to end the pty
};

}  // namespace kolvane::amplifier
