#include "soak/day_instrument.h"

#include <signal.h>
#include <sys/eventfd.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string_view>
#include <system_error>

namespace kolvane::soak {
namespace {

class Service {
 public:
  Service(int given_up, DayTally& tally) : given_up_(given_up), tally_(tally) {}

  // Until either side ends the connection.
  void Serve(int peer) {
    peer_ = peer;
    is_closed_ = false;
    std::string line;
    char buffer[4096];
    for (ssize_t got; !is_closed_ && (got = read(peer_, buffer, sizeof buffer)) > 0;) {
      for (const char c : std::string_view(buffer, static_cast<std::size_t>(got))) {
        if (c != '\n') {
          line += c;
        } else if (!is_closed_) {
          Handle(line);
          line.clear();
        }
      }
    }
    close(peer_);
  }

 private:
  void Handle(std::string_view line) {
    ++tally_.commands;
    if (line == "MSV? 1") return SendLines();
    if (line.starts_with("SAY ")) return SendLines(1 + std::atoi(std::string(line.substr(4)).c_str()));
    if (line == "MUTE") return AwaitGiveUp();
    if (line == "HALF") return SendInHalves();
    if (line == "DROP") return SendAndEnd();
    if (line == "CUT") return Cut();
    ++tally_.unknown;
  }

  void SendLines(int lines = 1) {
    const std::int64_t before = tally_.lines.fetch_add(lines);
    if (lines > 1) ++tally_.say_commands;
    for (int line = 1; line <= lines; ++line) Send(NumberedLine(before + line) + "\r\n");
  }

  void AwaitGiveUp() {
    tally_.silent = true;
    eventfd_t value = 0;
    if (eventfd_read(given_up_, &value) != 0) _exit(1);
  }

  void SendInHalves() {
    const std::string line = NumberedLine(++tally_.lines) + "\r\n";
    Send(line.substr(0, line.size() / 2));
    AwaitGiveUp();
    Send(line.substr(line.size() / 2));
  }

  void SendAndEnd() {
    SendLines();
    End();
  }

  // With a number that no line ever has.
  void Cut() {
    Send(NumberedLine(0).substr(0, 8));
    const linger at_once{1, 0};
    setsockopt(peer_, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    End();
  }

  void End() {
    is_closed_ = true;
    ++tally_.ends;
  }

  void Send(std::string_view bytes) const {
    if (send(peer_, bytes.data(), bytes.size(), MSG_NOSIGNAL) != static_cast<ssize_t>(bytes.size())) _exit(1);
  }

  int given_up_;
  DayTally& tally_;
  int peer_ = -1;
  bool is_closed_ = false;
};

}  // namespace

DayInstrument::DayInstrument() : given_up_(eventfd(0, EFD_CLOEXEC)) {
  void* const shared =
      mmap(nullptr, sizeof(DayTally), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
  tally_ = new (shared) DayTally;
  child_ = fork();
  if (child_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (child_ > 0) return;
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  for (Service service(given_up_.get(), *tally_);;) service.Serve(listener_.Accept());
}

DayInstrument::~DayInstrument() {
  kill(child_, SIGKILL);
  waitpid(child_, nullptr, 0);
  munmap(tally_, sizeof(DayTally));
}

void DayInstrument::GiveUp() {
  tally_->silent = false;
  if (eventfd_write(given_up_.get(), 1) != 0)
    throw std::system_error(errno, std::generic_category(), "eventfd");
}

std::string NumberedLine(std::int64_t number) {
  char text[64];
  std::snprintf(text, sizeof text, "%010lld,%+.6f", static_cast<long long>(number),
                static_cast<double>(number % 2000 - 1000) / 7);
  return text;
}

}  // namespace kolvane::soak
