#pragma once

#include <sys/socket.h>

#include <array>
#include <cstdint>
#include <string>

#include "base/descriptor.h"

namespace kolvane::base {

/// A TCP port that listens on a loopback address and leaves accepting to the caller; with kNotListening the
/// port is bound, but does not listen.
class Listener {
 public:
  static constexpr int kNotListening = -1;
  explicit Listener(int family = AF_INET, int backlog = 5);

  /// The next connection, with TCP_NODELAY, for the caller to close; -1 after Shutdown.
  int Accept() const;
  /// Ends this and every later wait in Accept.
  void Shutdown() const { shutdown(fd(), SHUT_RDWR); }
  int fd() const { return socket_.get(); }
  std::uint16_t port() const { return port_; }

 private:
  Descriptor socket_;
  std::uint16_t port_ = 0;
};

/// A listening port whose queue of connections is full.
class FullListener {
 public:
  FullListener();
  std::uint16_t port() const { return listener_.port(); }

 private:
  const Listener listener_{AF_INET, 0};
  std::array<Descriptor, 4> waiting_;
};

/// A pseudo terminal: the instrument holds the master, the other side opens node(). The test's own slave
/// descriptor keeps the line's settings alive between openings.
class Pty {
 public:
  Pty();
  int master() const { return master_.get(); }
  int slave() const { return slave_.get(); }
  const std::string& node() const { return node_; }
  void CloseMaster() { master_ = {}; }
  void CloseSlave() { slave_ = {}; }

 private:
  Descriptor master_;
  Descriptor slave_;
  std::string node_;
};

}  // namespace kolvane::base
