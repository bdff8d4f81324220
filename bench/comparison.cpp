#include "comparison.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace kolvane::bench {
namespace {

class BareLoop final : public Loop {
 public:
  explicit BareLoop(const EchoInstrument& instrument) : fd_(OpenBare(instrument)) {}
  ~BareLoop() override { close(fd_); }

  void Run(int exchanges) override {
    while (exchanges-- > 0) Exchange();
  }

 private:
  void Exchange() const {
    static constexpr std::string_view line = "MSV? 1,2,3\n";
    if (write(fd_, line.data(), line.size()) < 0) std::abort();
    char answer[256];
    do {
      const ssize_t got = read(fd_, answer, sizeof answer);
      if (got <= 0) std::abort();
      if (answer[got - 1] == '\n') return;
    } while (true);
  }

  int fd_;
};

double MicrosecondsEach(Loop& loop, int exchanges) {
  const auto start = std::chrono::steady_clock::now();
  loop.Run(exchanges);
  const std::chrono::duration<double, std::micro> took = std::chrono::steady_clock::now() - start;
  return took.count() / exchanges;
}

double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                   values.end());
  return values[values.size() / 2];
}

}  // namespace

void Compare(EchoInstrument::Kind kind, const MakeLoop& make, int exchanges, int rounds) {
  const EchoInstrument bare_peer(kind);
  const EchoInstrument peer(kind);
  BareLoop bare(bare_peer);
  const std::unique_ptr<Loop> loop = make(peer);
  bare.Run(exchanges / 10);
  loop->Run(exchanges / 10);
  std::vector<double> bare_times;
  std::vector<double> times;
  std::vector<double> ratios;
  for (int round = 0; round < rounds; ++round) {
    bare_times.push_back(MicrosecondsEach(bare, exchanges));
    times.push_back(MicrosecondsEach(*loop, exchanges));
    ratios.push_back(times.back() / bare_times.back());
  }
  std::fprintf(stderr, "%-4s  %10.2f  %12.2f  %12.0f  %7.3f\n",
               kind == EchoInstrument::Kind::kTcp ? "tcp" : "pty", Median(bare_times), Median(times),
               1e6 / Median(times), Median(ratios));
}

void CompareLines(const MakeLoop& make, int argc, char** argv) {
  const int exchanges = argc > 1 ? std::atoi(argv[1]) : 20000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 15;
  PinToOneCore();
  std::fputs(
      "      bare loop   through the   exchanges    median\n"
      "      us each     terminal us   a second     ratio\n",
      stderr);
  Compare(EchoInstrument::Kind::kTcp, make, exchanges, rounds);
  Compare(EchoInstrument::Kind::kPty, make, exchanges, rounds);
}

}  // namespace kolvane::bench
