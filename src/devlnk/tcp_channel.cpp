#include "devlnk/tcp_channel.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "base/descriptor.h"
#include "base/text.h"
#include "devlnk/background_work.h"
#include "devlnk/input_queue.h"
#include "devlnk/stream_channel.h"

namespace kolvane::devlnk {
namespace {

addrinfo Hints(int flags) {
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICSERV | flags;
  return hints;
}

/// The result of getaddrinfo: its code, and the list if that is 0.
struct Lookup {
  int code = EAI_AGAIN;
  AddressList addresses;
};

Lookup Resolve(const std::string& host, const std::string& service, int flags) {
  const addrinfo hints = Hints(flags);
  addrinfo* found = nullptr;
  const int code = getaddrinfo(host.c_str(), service.c_str(), &hints, &found);
  return {code, AddressList(code == 0 ? found : nullptr)};
}

FoundHost AskNameService(const std::string& host, const std::string& service, Deadline& deadline) {
  std::optional<Lookup> answer =
      RunWithDeadline(deadline, [host, service] { return Resolve(host, service, 0); });
  if (!answer) return {Status::kLookupFailed, nullptr};
  if (answer->code != 0) return {StatusFromLookup(answer->code), nullptr};
  return {Status::kOk, std::move(answer->addresses)};
}

// A peer that vanished silently is detected within half a minute, idle or not.
constexpr int kKeepIdleSeconds = 10;
constexpr int kKeepIntervalSeconds = 5;
constexpr int kKeepCount = 3;
constexpr int kUnacknowledgedMs = 30'000;

// How long the first read of an answer waits in the call.
constexpr std::int32_t kSliceMs = Waiting::kPaceMs;

class TcpChannel final : public StreamChannel {
 public:
  explicit TcpChannel(base::Descriptor socket) : StreamChannel(kSliceMs), socket_(std::move(socket)) {}

  // Closing with unread input would reset the connection, and the peer might lose the last command.
  ~TcpChannel() override {
    if (abandoned_) return;
    shutdown(socket_.get(), SHUT_WR);
    recv(socket_.get(), nullptr, InputQueue::kLimit, MSG_DONTWAIT | MSG_TRUNC);
  }

  bool Abandon() override {
    abandoned_ = true;
    return true;
  }

 private:
  [[gnu::hot]] ssize_t ReadWaiting(std::span<char> room) override {
    return recv(socket_.get(), room.data(), room.size(), 0);
  }
  ssize_t ReadNow(std::span<char> room) override {
    return recv(socket_.get(), room.data(), room.size(), MSG_DONTWAIT);
  }
  [[gnu::hot]] ssize_t WriteNow(std::string_view bytes) override {
    return send(socket_.get(), bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
  }
  int poll_fd() const override { return socket_.get(); }
  Status EndOfInput() const override { return Status::kClosedByPeer; }

  base::Descriptor socket_;
  bool abandoned_ = false;
};

template <typename Value>
void SetOption(int fd, int level, int option, const Value& value) {
  setsockopt(fd, level, option, &value, sizeof value);
}

void SetOptions(int fd) {
  SetOption(fd, IPPROTO_TCP, TCP_NODELAY, 1);
  SetOption(fd, SOL_SOCKET, SO_KEEPALIVE, 1);
  SetOption(fd, IPPROTO_TCP, TCP_KEEPIDLE, kKeepIdleSeconds);
  SetOption(fd, IPPROTO_TCP, TCP_KEEPINTVL, kKeepIntervalSeconds);
  SetOption(fd, IPPROTO_TCP, TCP_KEEPCNT, kKeepCount);
  SetOption(fd, IPPROTO_TCP, TCP_USER_TIMEOUT, kUnacknowledgedMs);
  SetOption(fd, SOL_SOCKET, SO_RCVTIMEO, timeval{0, kSliceMs * 1000L});
}

// A connection to a local port without a listener may connect the socket to itself.
bool IsConnectedToItself(int fd) {
  sockaddr_storage own{};
  sockaddr_storage peer{};
  socklen_t own_size = sizeof own;
  socklen_t peer_size = sizeof peer;
  if (getsockname(fd, reinterpret_cast<sockaddr*>(&own), &own_size) != 0) return false;
  if (getpeername(fd, reinterpret_cast<sockaddr*>(&peer), &peer_size) != 0) return false;
  return own_size == peer_size && std::memcmp(&own, &peer, own_size) == 0;
}

Status StatusOfConnect(int error) {
  return error == ETIMEDOUT ? Status::kConnectTimeout : StatusFromErrno(error);
}

Status Connect(int fd, const addrinfo& address, Deadline& deadline) {
  if (connect(fd, address.ai_addr, address.ai_addrlen) != 0) {
    if (errno != EINPROGRESS && errno != EINTR) return StatusOfConnect(errno);
    if (!WaitFor(fd, POLLOUT, deadline)) return Status::kConnectTimeout;
    int error = 0;
    socklen_t size = sizeof error;
    getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &size);
    if (error != 0) return StatusOfConnect(error);
  }
  return IsConnectedToItself(fd) ? Status::kRefused : Status::kOk;
}

Opened OpenAddress(const addrinfo& address, Deadline deadline) {
  base::Descriptor fd(
      socket(address.ai_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, address.ai_protocol));
  if (!fd) return {StatusFromErrno(errno), nullptr};
  const Status status = Connect(fd.get(), address, deadline);
  if (status != Status::kOk) return {status, nullptr};
  MakeBlocking(fd.get());
  SetOptions(fd.get());
  return {Status::kOk, std::make_unique<TcpChannel>(std::move(fd))};
}

int CountFrom(const addrinfo* address) {
  int count = 0;
  for (; address != nullptr; address = address->ai_next) ++count;
  return count;
}

// Each address gets an equal share of the time left, so that a silent one does not use it all up.
Opened OpenFirst(const addrinfo* addresses, Deadline& deadline) {
  Opened opened{Status::kHostNotFound, nullptr};
  for (const addrinfo* at = addresses; at != nullptr && !opened.channel && !deadline.given_up();
       at = at->ai_next)
    opened = OpenAddress(*at, deadline.Part(deadline.RemainingMs() / CountFrom(at)));
  return opened;
}

}  // namespace

Status StatusFromLookup(int code) {
  switch (code) {
    case EAI_NONAME:
    case EAI_NODATA:
    case EAI_ADDRFAMILY:
      return Status::kHostNotFound;
    case EAI_MEMORY:
      return Status::kOutOfResources;
    default:
      return Status::kLookupFailed;
  }
}

FoundHost FindHost(const std::string& host, std::uint16_t port, Deadline& deadline) {
  const std::string service = std::to_string(port);
  Lookup figures = Resolve(host, service, AI_NUMERICHOST);
  if (figures.code == 0) return {Status::kOk, std::move(figures.addresses)};
  return AskNameService(host, service, deadline);
}

std::optional<std::uint16_t> IpPortFrom(std::int32_t data_bits) {
  const std::int32_t port = data_bits < 0 ? data_bits + 0x10000 : data_bits;
  const bool valid = data_bits < 0 ? port >= 0x8000 : port >= 1 && port <= 0xFFFF;
  return valid ? std::optional(static_cast<std::uint16_t>(port)) : std::nullopt;
}

Opened OpenTcp(const PortRequest& request, Deadline& deadline) {
  const std::string host(base::TrimSpaces(request.text));
  const auto port = IpPortFrom(request.data_bits);
  if (host.empty() || !port) return {Status::kInvalidArgument, nullptr};
  const FoundHost found = FindHost(host, *port, deadline);
  if (found.status != Status::kOk) return {found.status, nullptr};
  return OpenFirst(found.addresses.get(), deadline);
}

}  // namespace kolvane::devlnk
