#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "base/loopback.h"

namespace kolvane::app {

/// An instrument on a loopback port that serves one connection at a time and answers each line (without its
/// LF) with the result of `reply`.
class Instrument {
 public:
  using Reply = std::function<std::string(const std::string& line)>;

  explicit Instrument(Reply reply);
  ~Instrument();
  Instrument(const Instrument&) = delete;
  Instrument& operator=(const Instrument&) = delete;

  std::string Resource() const { return "TCPIP::127.0.0.1::" + std::to_string(port()) + "::SOCKET"; }
  std::uint16_t port() const { return listener_.port(); }

  /// Returns once `count` lines have arrived.
  void AwaitLines(std::size_t count);
  std::vector<std::string> lines();
  /// Returns once the program has closed a connection.
  void AwaitClose();

 private:
  void Serve();
  void ServeConnection(int peer);

  const Reply reply_;
  const base::Listener listener_;
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> lines_;
  bool closed_ = false;
  std::thread thread_;
};

/// Echoes each line, ended by CR LF.
inline std::string Echo(const std::string& line) { return line + "\r\n"; }

}  // namespace kolvane::app
