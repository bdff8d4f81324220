#pragma once

#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::amplifier {

/// The other end of a connection in tests. Every wait is bounded; bytes that do not arrive in time are
/// missing from the result.
class Client {
 public:
  /// Connects to 127.0.0.1 (or ::1) at `port`.
  static Client Tcp(int port, bool ipv6 = false);
  /// Opens a terminal device in raw mode.
  static Client Pty(const std::string& path);

  explicit operator bool() const { return static_cast<bool>(descriptor_); }
  int descriptor() const { return descriptor_.get(); }
  void Send(std::string_view bytes) const;
  /// Sends `command` and a LF and reads the answer up to its CR LF, which is stripped.
  std::string Ask(std::string_view command) const;
  /// Exactly `count` bytes, or fewer when the stream ended or nothing more came.
  std::string Read(std::size_t count) const;
  /// Everything before `end`, which is dropped.
  std::string ReadUntil(std::string_view end) const;
  /// Everything up to the end of the stream; `error` receives the errno that ended it, or 0.
  std::string ReadAll(int* error) const;

 private:
  explicit Client(base::Descriptor descriptor) : descriptor_(std::move(descriptor)) {}
  bool WaitFor(short events) const;

  base::Descriptor descriptor_;
};

}  // namespace kolvane::amplifier
