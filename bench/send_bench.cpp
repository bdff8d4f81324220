// From the start of `kolvane send` to its first command on the wire, beside this program started again with
// nothing to do but connect and send. Usage: send_bench [rounds]

#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "loopback.h"
#include "process.h"
#include "row.h"

namespace kolvane::bench {
namespace {

constexpr char kSend[] = "--send";

void Check(bool good) {
  if (!good) std::abort();
}

// Takes one connection at a time and looks at the first byte that comes.
class Listener {
 public:
  Listener() : fd_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = Loopback(0);
    socklen_t size = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    Check(bind(fd_, generic, size) == 0 && listen(fd_, 8) == 0 && getsockname(fd_, generic, &size) == 0);
    port_ = ntohs(address.sin_port);
  }
  ~Listener() { close(fd_); }
  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  std::string port() const { return std::to_string(port_); }

  double MillisecondsToFirstByte(const std::vector<std::string>& words) const {
    const Process program(words);
    const int peer = accept4(fd_, nullptr, nullptr, SOCK_CLOEXEC);
    char first = 0;
    Check(read(peer, &first, 1) == 1);
    const double now = MonotonicSeconds();
    close(peer);
    return (now - program.started()) * 1e3;
  }

 private:
  int fd_;
  std::uint16_t port_ = 0;
};

int SendOnly(const char* port) {
  const int peer = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Loopback(static_cast<std::uint16_t>(std::atoi(port)));
  Check(connect(peer, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0);
  Check(write(peer, "*IDN?\n", 6) == 6);
  return 0;
}

void MeasureSend(int rounds) {
  const Listener listener;
  const Comparison comparison = Alternate(
      rounds,
      [&] {
        return listener.MillisecondsToFirstByte({"/proc/self/exe", kSend, listener.port()});
      },
      [&] {
        return listener.MillisecondsToFirstByte({KOLVANE_PROGRAM, "send", "*IDN?", "--connect",
                                                 "TCPIP::127.0.0.1::" + listener.port() + "::SOCKET"});
      });
  PrintAtMost({"start of kolvane send to its first command", "a program that only connects and sends", "ms"},
              comparison.yardstick, comparison.measured, 50);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) {
  using namespace kolvane::bench;
  if (argc == 3 && std::string(argv[1]) == kSend) return SendOnly(argv[2]);
  MeasureSend(argc > 1 ? std::atoi(argv[1]) : 21);
}
