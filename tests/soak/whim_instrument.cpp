#include "soak/whim_instrument.h"

#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <random>
#include <string>
#include <string_view>
#include <system_error>

namespace kolvane::soak {
namespace {

class Service {
 public:
  explicit Service(std::uint32_t seed) : random_(seed) {}

  // Until either side ends the connection.
  void Serve(int peer) {
    peer_ = peer;
    is_open_ = true;
    while (is_open_) {
      pollfd wait{peer_, POLLIN, 0};
      if (poll(&wait, 1, Below(400)) == 0) {
        Send(Value());
      } else {
        Receive();
      }
    }
    close(peer_);
  }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }

  void Receive() {
    char buffer[4096];
    const ssize_t got = read(peer_, buffer, sizeof buffer);
    if (got <= 0) is_open_ = false;
    const std::string_view bytes(buffer, static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    for (auto lines = std::ranges::count(bytes, '\n'); lines > 0 && is_open_; --lines) Answer();
  }

  std::string Value() {
    return std::to_string(Below(2000) - 1000) + "." + std::to_string(Below(100)) + "\r\n";
  }

  std::string AnyBytes(int count) {
    std::string bytes;
    while (count-- > 0) bytes += static_cast<char>(Below(256));
    return bytes;
  }

  std::string Block(int announced, int sent) {
    const std::string length = std::to_string(announced);
    return "#" + std::to_string(length.size()) + length + AnyBytes(sent);
  }

  void Answer() {
    switch (Below(24)) {
      case 0:
        return;
      case 1:
        return Send(Value() + Value() + Value());
      case 2:
        return Send(Block(300, 300) + "\r\n");
      case 3:
        return Send(Block(300, 100));
      case 4:
        return Send(AnyBytes(Below(600)) + "\r\n");
      case 5:
        return Send(std::string(static_cast<std::size_t>(Below(40'000)), 'x') + "\r\n");
      case 6:
        return Send("12.5");
      case 7:
        is_open_ = Below(8) != 0;
        return;
      case 8:
        return Send("\xC4nderung \xB5V, \"Wert\";0x1F\t\r\n");
      case 9:
        for (int line = 0; line < 200; ++line) Send(Value());
        return;
      default:
        return Send(Value().insert(0, "1.5,-2e3,"));
    }
  }

  void Send(std::string_view bytes) {
    if (send(peer_, bytes.data(), bytes.size(), MSG_NOSIGNAL) < 0) is_open_ = false;
  }

  std::minstd_rand random_;
  int peer_ = -1;
  bool is_open_ = false;
};

}  // namespace

WhimInstrument::WhimInstrument(std::uint32_t seed) {
  child_ = fork();
  if (child_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (child_ > 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  for (Service service(seed);;) service.Serve(listener_.Accept());
}

WhimInstrument::~WhimInstrument() {
  kill(child_, SIGKILL);
  waitpid(child_, nullptr, 0);
}

}  // namespace kolvane::soak
