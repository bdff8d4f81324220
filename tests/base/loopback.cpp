#include "base/loopback.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace kolvane::base {
namespace {

void Require(bool condition, const char* what) {
  if (!condition) throw std::system_error(errno, std::generic_category(), what);
}

}  // namespace

Listener::Listener(int family, int backlog) : socket_(socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  // sockaddr_in6 is the larger of the two, and the port has the same position in both.
  sockaddr_in6 address{};
  address.sin6_family = static_cast<sa_family_t>(family);
  if (family == AF_INET6) {
    address.sin6_addr = in6addr_loopback;
  } else {
    reinterpret_cast<sockaddr_in*>(&address)->sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  }
  socklen_t size = family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
  auto* const generic = reinterpret_cast<sockaddr*>(&address);
  Require(bind(fd(), generic, size) == 0, "no port");
  Require(backlog == kNotListening || listen(fd(), backlog) == 0, "cannot listen");
  getsockname(fd(), generic, &size);
  port_ = ntohs(address.sin6_port);
}

int Listener::Accept() const {
  const int connection = accept4(fd(), nullptr, nullptr, SOCK_CLOEXEC);
  const int on = 1;
  setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return connection;
}

FullListener::FullListener() {
  sockaddr_in address{};
  socklen_t size = sizeof address;
  getsockname(listener_.fd(), reinterpret_cast<sockaddr*>(&address), &size);
  for (Descriptor& waiting : waiting_) {
    waiting = Descriptor(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    connect(waiting.get(), reinterpret_cast<const sockaddr*>(&address), size);
  }
}

Pty::Pty() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  char name[128];
  Require(grantpt(master()) == 0 && unlockpt(master()) == 0, "no pseudo terminal");
  Require(ptsname_r(master(), name, sizeof name) == 0, "no name");
  node_ = name;
  slave_ = Descriptor(open(name, O_RDWR | O_NOCTTY | O_CLOEXEC));
  Require(static_cast<bool>(slave_), "cannot open the pseudo terminal");
}

}  // namespace kolvane::base
