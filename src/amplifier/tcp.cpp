#include "amplifier/tcp.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

namespace kolvane::amplifier {
namespace {

constexpr suseconds_t kReceiveTimeoutUs = 10'000;
constexpr int kBacklog = 64;
constexpr std::chrono::milliseconds kAcceptRetry{100};

template <typename Value>
void SetOption(int socket, int level, int name, const Value& value) {
  setsockopt(socket, level, name, &value, sizeof(value));
}

base::Descriptor NewListener(int family) {
  base::Descriptor socket(::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
  if (socket) SetOption(socket.get(), SOL_SOCKET, SO_REUSEADDR, 1);
  return socket;
}

template <typename Address>
bool Listen(const base::Descriptor& socket, Address& address) {
  socklen_t size = sizeof(address);
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  return socket && bind(socket.get(), generic, size) == 0 && listen(socket.get(), kBacklog) == 0 &&
         getsockname(socket.get(), generic, &size) == 0;
}

base::Descriptor ListenOnIpv4(std::uint16_t& port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  base::Descriptor socket = NewListener(AF_INET);
  if (!Listen(socket, address)) {
    throw std::system_error(errno, std::generic_category(),
                            "cannot listen on 127.0.0.1:" + std::to_string(port));
  }
  port = ntohs(address.sin_port);
  return socket;
}

// A failure here is not reported: the port is announced for IPv4.
base::Descriptor ListenOnIpv6(std::uint16_t port) {
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  address.sin6_port = htons(port);
  address.sin6_addr = in6addr_loopback;
  base::Descriptor socket = NewListener(AF_INET6);
  if (socket) SetOption(socket.get(), IPPROTO_IPV6, IPV6_V6ONLY, 1);
  return Listen(socket, address) ? std::move(socket) : base::Descriptor();
}

}  // namespace

TcpStream::TcpStream(base::Descriptor socket) : socket_(std::move(socket)) {
  SetOption(socket_.get(), IPPROTO_TCP, TCP_NODELAY, 1);
  SetOption(socket_.get(), SOL_SOCKET, SO_RCVTIMEO, timeval{0, kReceiveTimeoutUs});
}

Transfer TcpStream::Receive(std::span<char> space) {
  return Transfer::Of(recv(descriptor(), space.data(), space.size(), MSG_DONTWAIT));
}

Transfer TcpStream::ReceiveWithTimeout(std::span<char> space) {
  return Transfer::Of(recv(descriptor(), space.data(), space.size(), 0));
}

Transfer TcpStream::Send(std::string_view bytes) {
  return Transfer::Of(send(descriptor(), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL));
}

// Unread bytes would turn the end of stream into a reset.
bool TcpStream::EndOrderly() {
  shutdown(descriptor(), SHUT_WR);
  std::array<char, 4096> unread;
  while (Receive(unread).kind == Transfer::Kind::kMoved) {
  }
  return true;
}

void TcpStream::EndByReset() { SetOption(descriptor(), SOL_SOCKET, SO_LINGER, linger{1, 0}); }

TcpListener::TcpListener(std::uint16_t port)
    : ipv4_(ListenOnIpv4(port)), ipv6_(ListenOnIpv6(port)), port_(port) {}

base::Descriptor TcpListener::Accept(int listening) {
  base::Descriptor socket(accept4(listening, nullptr, nullptr, SOCK_CLOEXEC));
  const bool lacks = !socket && (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM);
  paused_until_ = lacks ? std::optional(Clock::now() + kAcceptRetry) : std::nullopt;
  return socket;
}

}  // namespace kolvane::amplifier
