#pragma once

#include <poll.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "amplifier/connection.h"
#include "amplifier/line_handler.h"
#include "amplifier/options.h"
#include "amplifier/tcp.h"
#include "base/clock.h"
#include "base/descriptor.h"

namespace kolvane::amplifier {

/// One instrument with all its connections. The constructor starts listening, Run() starts answering.
class Server {
 public:
  /// Throws std::system_error if the port, the pty or a file cannot be opened, ReadingStopped if `stop`
  /// becomes readable while a file that is a pipe is read.
  explicit Server(const Options& options, int stop = -1);

  /// The port listened on; 0 without TCP.
  std::uint16_t Port() const { return listener_ ? listener_->Port() : std::uint16_t{0}; }
  /// Serves until `stop` (an eventfd, a signalfd, a pipe) becomes readable, which is noticed within a few
  /// milliseconds.
  void Run(int stop);

 private:
  void ExchangeWithOnlyOne();
  void Wait(int stop);
  void Watch(int descriptor, short events) { watched_.push_back({descriptor, events, 0}); }
  std::optional<Connection::Clock::time_point> NextDue() const;
  void ServeConnections();
  void Accept(int listening);
  void OpenPty();
  void DropEnded();

  base::SteadyClock clock_;
  Options options_;
  std::unique_ptr<LineHandler> handler_;
  std::optional<TcpListener> listener_;
  std::unique_ptr<Connection> pty_;
  std::vector<std::unique_ptr<Connection>> connections_;
  std::vector<pollfd> watched_;  // stop, two listeners, pty, connections
};

/// A server in this process, for tests: ServerThread amplifier({.echo = true}), then connect to
/// 127.0.0.1:Port(). It accepts connections once constructed; the destructor stops it.
class ServerThread {
 public:
  /// Without port and pty link it listens on a free port. Throws std::system_error as Server does.
  explicit ServerThread(Options options = {});
  ~ServerThread();
  ServerThread(const ServerThread&) = delete;
  ServerThread& operator=(const ServerThread&) = delete;

  std::uint16_t Port() const { return server_.Port(); }

 private:
  Server server_;
  base::Descriptor stop_;
  std::thread thread_;
};

}  // namespace kolvane::amplifier
