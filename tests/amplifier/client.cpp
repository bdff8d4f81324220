#include "client.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace kolvane::amplifier {
namespace {

constexpr int kTimeoutMs = 20'000;

template <typename Address>
base::Descriptor ConnectTo(int family, const Address& address) {
  base::Descriptor socket(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) return {};
  return socket;
}

}  // namespace

Client Client::Tcp(int port, bool ipv6) {
  if (ipv6) {
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(static_cast<std::uint16_t>(port));
    address.sin6_addr = in6addr_loopback;
    return Client(ConnectTo(AF_INET6, address));
  }
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return Client(ConnectTo(AF_INET, address));
}

Client Client::Pty(const std::string& path) {
  base::Descriptor terminal(open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  termios mode{};
  if (terminal && tcgetattr(terminal.get(), &mode) == 0) {
    cfmakeraw(&mode);
    tcsetattr(terminal.get(), TCSANOW, &mode);
  }
  return Client(std::move(terminal));
}

bool Client::WaitFor(short events) const {
  pollfd entry{descriptor(), events, 0};
  return poll(&entry, 1, kTimeoutMs) == 1;
}

void Client::Send(std::string_view bytes) const {
  while (!bytes.empty() && WaitFor(POLLOUT)) {
    const ssize_t count = write(descriptor(), bytes.data(), bytes.size());
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::string Client::Ask(std::string_view command) const {
  Send(std::string(command) + '\n');
  return ReadUntil("\r\n");
}

std::string Client::Read(std::size_t count) const {
  std::string bytes(count, '\0');
  std::size_t have = 0;
  while (have < count && WaitFor(POLLIN)) {
    const ssize_t moved = read(descriptor(), bytes.data() + have, count - have);
    if (moved <= 0) break;
    have += static_cast<std::size_t>(moved);
  }
  bytes.resize(have);
  return bytes;
}

std::string Client::ReadUntil(std::string_view end) const {
  std::string bytes;
  while (!bytes.ends_with(end)) {
    const std::string next = Read(1);
    if (next.empty()) return bytes;
    bytes += next;
  }
  bytes.resize(bytes.size() - end.size());
  return bytes;
}

std::string Client::ReadAll(int* error) const {
  std::string bytes;
  std::array<char, 4096> part;
  for (;;) {
    *error = ETIMEDOUT;
    if (!WaitFor(POLLIN)) return bytes;
    const ssize_t moved = read(descriptor(), part.data(), part.size());
    *error = moved < 0 ? errno : 0;
    if (moved <= 0) return bytes;
    bytes.append(part.data(), static_cast<std::size_t>(moved));
  }
}

}  // namespace kolvane::amplifier
