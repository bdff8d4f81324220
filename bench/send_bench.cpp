// `kolvane send` from its start to its first command on the wire, and to its end, compared with a C program
// that does nothing else, and with lxi if that is installed. Usage: send_bench [rounds]

#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "loopback.h"
#include "process.h"
#include "row.h"

namespace kolvane::bench {
namespace {

void Check(bool good) {
  if (!good) std::abort();
}

// Accepts one connection at a time and waits for the first byte.
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

  // Answers the one line that it receives.
  double MillisecondsOf(const std::vector<std::string>& words) const {
    Process program(words);
    const int peer = accept4(fd_, nullptr, nullptr, SOCK_CLOEXEC);
    std::string line;
    for (char byte = 0; !line.ends_with('\n') && read(peer, &byte, 1) == 1;) line += byte;
    Check(line == "*IDN?\n" && write(peer, "KVA,8\r\n", 7) == 7);
    Check(program.Wait() == 0);
    const double now = MonotonicSeconds();
    close(peer);
    return (now - program.started()) * 1e3;
  }

 private:
  int fd_;
  std::uint16_t port_ = 0;
};

// The path of lxi; empty if it is not installed.
std::string PathOfLxi() {
  for (const char* path : {"/usr/bin/lxi", "/usr/local/bin/lxi"})
    if (access(path, X_OK) == 0) return path;
  return {};
}

void MeasureSend(int rounds) {
  const Listener listener;
  const std::vector<std::string> send = {KOLVANE_PROGRAM, "send", "*IDN?", "--connect",
                                         "TCPIP::127.0.0.1::" + listener.port() + "::SOCKET"};
  const std::vector<std::string> query_only = {KOLVANE_QUERY_ONLY, listener.port()};
  const Comparison start = Alternate(
      rounds, [&] { return listener.MillisecondsToFirstByte(query_only); },
      [&] { return listener.MillisecondsToFirstByte(send); });
  PrintAtMost({"start of kolvane send to its first command", "a C program that connects and queries", "ms"},
              start.baseline, start.measured, 3);
  const Comparison whole = Alternate(
      rounds, [&] { return listener.MillisecondsOf(query_only); },
      [&] { return listener.MillisecondsOf(send); });
  PrintAtMost({"kolvane send, whole process", "the same", "ms"}, whole.baseline, whole.measured, 3);
  const std::string lxi = PathOfLxi();
  if (lxi.empty()) return;
  const Comparison other = Alternate(
      rounds,
      [&] {
        return listener.MillisecondsOf(
            {lxi, "scpi", "--raw", "--address", "127.0.0.1", "--port", listener.port(), "*IDN?"});
      },
      [&] { return listener.MillisecondsOf(send); });
  PrintWithoutGoal({"the same", "lxi scpi --raw", "ms"}, other);
}

}  // namespace
}  // namespace kolvane::bench

int main(int argc, char** argv) { kolvane::bench::MeasureSend(argc > 1 ? std::atoi(argv[1]) : 21); }
