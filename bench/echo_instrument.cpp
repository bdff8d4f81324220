#include "echo_instrument.h"

#include <fcntl.h>
#include <netinet/tcp.h>
#include <sched.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "loopback.h"

namespace kolvane::bench {
namespace {

int Checked(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

void NoDelay(int fd) {
  const int on = 1;
  Checked(setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on), "TCP_NODELAY");
}

void MakeRaw(int fd) {
  termios line{};
  Checked(tcgetattr(fd, &line), "tcgetattr");
  cfmakeraw(&line);
  Checked(tcsetattr(fd, TCSANOW, &line), "tcsetattr");
}

// Sends back what it receives until the other side closes.
void Echo(int fd) {
  char buffer[4096];
  for (ssize_t got; (got = read(fd, buffer, sizeof buffer)) > 0;) {
    if (write(fd, buffer, static_cast<std::size_t>(got)) != got) return;
  }
}

[[noreturn]] void ServeTcp(int listener) {
  for (;;) {
    const int peer = accept(listener, nullptr, nullptr);
    if (peer < 0) _exit(1);
    NoDelay(peer);
    Echo(peer);
    close(peer);
  }
}

}  // namespace

void PinToOneCore() {
  cpu_set_t one;
  CPU_ZERO(&one);
  CPU_SET(0, &one);
  Checked(sched_setaffinity(0, sizeof one, &one), "sched_setaffinity");
}

EchoInstrument::EchoInstrument(Kind kind) {
  kind == Kind::kTcp ? ListenTcp() : OpenPty();
  child_ = Checked(fork(), "fork");
  if (child_ != 0) return;
  // Where the benchmark is ended from outside, no destructor ends this process.
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  if (kind == Kind::kTcp) ServeTcp(fd_);
  Echo(fd_);
  _exit(0);
}

EchoInstrument::~EchoInstrument() {
  kill(child_, SIGKILL);
  waitpid(child_, nullptr, 0);
  close(fd_);
  if (slave_ >= 0) close(slave_);
}

void EchoInstrument::ListenTcp() {
  fd_ = Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket");
  sockaddr_in address = Loopback(0);
  socklen_t size = sizeof address;
  Checked(bind(fd_, reinterpret_cast<sockaddr*>(&address), size), "bind");
  Checked(listen(fd_, 8), "listen");
  Checked(getsockname(fd_, reinterpret_cast<sockaddr*>(&address), &size), "getsockname");
  port_ = ntohs(address.sin_port);
}

void EchoInstrument::OpenPty() {
  fd_ = Checked(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), "posix_openpt");
  Checked(grantpt(fd_), "grantpt");
  Checked(unlockpt(fd_), "unlockpt");
  node_ = ptsname(fd_);
  // Kept open, so that the line does not hang up when a client closes it.
  slave_ = Checked(open(node_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open");
  MakeRaw(slave_);
}

int OpenBare(const EchoInstrument& instrument) {
  if (!instrument.node().empty()) {
    const int line = Checked(open(instrument.node().c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), "open");
    MakeRaw(line);
    return line;
  }
  const int peer = Checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "socket");
  const sockaddr_in address = Loopback(instrument.port());
  Checked(connect(peer, reinterpret_cast<const sockaddr*>(&address), sizeof address), "connect");
  NoDelay(peer);
  return peer;
}

}  // namespace kolvane::bench
