#pragma once

#include <cstdint>
#include <thread>

#include "amplifier/options.h"
#include "amplifier/server.h"
#include "base/descriptor.h"

namespace kolvane::amplifier {

/// A server inside this process, for tests: ServerThread amplifier({.echo = true}), then connect to
/// 127.0.0.1:Port(). It can be connected to once constructed; the destructor ends it.
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
