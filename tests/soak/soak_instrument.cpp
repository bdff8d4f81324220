#include "soak/soak_instrument.h"

#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <new>
#include <string_view>
#include <system_error>

namespace kolvane::soak {
namespace {

constexpr std::int64_t kSplitEvery = 997;
constexpr int kLengths = 29;

int Checked(int result, const char* what) {
  if (result < 0) throw std::system_error(errno, std::generic_category(), what);
  return result;
}

std::int64_t NowMicroseconds() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return now.tv_sec * 1'000'000LL + now.tv_nsec / 1000;
}

// The unit's first letter is B5 in Windows-1252.
std::string Answer(std::int64_t number) {
  char text[32];
  std::snprintf(text, sizeof text, "%010lld \xB5m/m ", static_cast<long long>(number));
  const auto length = static_cast<std::size_t>(number % kLengths);
  return text + std::string("+12.345678,-0.001234,+98.76543").substr(0, length + 1) + "\r\n";
}

class Service {
 public:
  Service(int peer, std::int64_t expected, const std::string& copy, Tally& tally)
      : peer_(peer), expected_(expected), copy_(std::fopen(copy.c_str(), "wb")), tally_(tally) {}

  // True if the terminal has closed the connection and everything was copied.
  bool Run() {
    std::string line;
    char buffer[4096];
    for (ssize_t got; (got = read(peer_, buffer, sizeof buffer)) > 0;) {
      for (const char c : std::string_view(buffer, static_cast<std::size_t>(got))) {
        if (c != '\n') {
          line += c;
        } else {
          if (!Handle(line)) return false;
          line.clear();
        }
      }
    }
    return std::fclose(copy_) == 0 && line.empty();
  }

 private:
  bool Handle(std::string_view line) {
    const std::int64_t number = ++tally_.commands;
    if (line != NumberingInstrument::kCommand) ++tally_.garbled;
    const std::string answer = Answer(number);
    const std::size_t first = number % kSplitEvery == 0 ? answer.size() / 2 : answer.size();
    const bool sent = Send(answer.substr(0, first)) && Send(answer.substr(first));
    const std::int64_t tenth = expected_ / 10;
    if (tenth > 0 && number % tenth == 0 && number / tenth <= 10)
      tally_.tenths[static_cast<std::size_t>(number / tenth)] = NowMicroseconds();
    if (number == 1) tally_.tenths[0] = NowMicroseconds();
    return sent && std::fwrite(answer.data(), 1, answer.size(), copy_) == answer.size();
  }

  bool Send(std::string_view bytes) const {
    return bytes.empty() ||
           send(peer_, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
  }

  int peer_;
  std::int64_t expected_;
  std::FILE* copy_;
  Tally& tally_;
};

[[noreturn]] void Serve(const base::Listener& listener, std::int64_t expected, const std::string& copy,
                        Tally& tally) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  _exit(Service(listener.Accept(), expected, copy, tally).Run() ? 0 : 1);
}

}  // namespace

NumberingInstrument::NumberingInstrument(std::int64_t expected, const std::string& copy) {
  void* const shared =
      mmap(nullptr, sizeof(Tally), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (shared == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
  tally_ = new (shared) Tally;
  child_ = Checked(fork(), "fork");
  if (child_ == 0) Serve(listener_, expected, copy, *tally_);
}

NumberingInstrument::~NumberingInstrument() {
  if (child_ > 0) {
    kill(child_, SIGKILL);
    waitpid(child_, nullptr, 0);
  }
  munmap(tally_, sizeof(Tally));
}

void NumberingInstrument::AwaitEnd() {
  int status = 0;
  Checked(waitpid(child_, &status, 0), "waitpid");
  child_ = -1;
  if (status != 0) throw std::runtime_error("the instrument could not send or copy an answer");
}

}  // namespace kolvane::soak
