#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

#include "amplifier/stream.h"

namespace kolvane::amplifier {

/// An accepted TCP connection.
class TcpStream final : public Stream {
 public:
  explicit TcpStream(base::Descriptor socket);

  int descriptor() const override { return socket_.get(); }
  Transfer Receive(std::span<char> space) override;
  Transfer ReceiveWithTimeout(std::span<char> space) override;
  Transfer Send(std::string_view bytes) override;
  [[nodiscard]] bool EndOrderly() override;
  void EndByReset() override;

 private:
  base::Descriptor socket_;
};

/// Listens on 127.0.0.1 and, if the system has IPv6, on ::1 at the same port.
class TcpListener {
 public:
  using Clock = std::chrono::steady_clock;

  /// Port 0 selects a free one. Throws std::system_error.
  explicit TcpListener(std::uint16_t port);

  std::uint16_t Port() const { return port_; }
  int ipv4() const { return ipv4_.get(); }
  /// -1 without IPv6.
  int ipv6() const { return ipv6_.get(); }
  /// Accepts a waiting connection of one of the two sockets; empty if there is none.
  base::Descriptor Accept(int listening);
  /// How long not to watch the sockets, because the system had no resources for the last connection, which is
  /// still waiting. Nothing once that time is over.
  std::optional<Clock::time_point> PausedUntil() const {
    return paused_until_ && *paused_until_ > Clock::now() ? paused_until_ : std::nullopt;
  }

 private:
  base::Descriptor ipv4_;
  base::Descriptor ipv6_;
  std::uint16_t port_ = 0;
  std::optional<Clock::time_point> paused_until_;
};

}  // namespace kolvane::amplifier
