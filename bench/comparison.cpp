#include "comparison.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

#include "row.h"

namespace kolvane::bench {
namespace {

void Compare(EchoInstrument::Kind kind, const std::string& claim, double goal, const MakeLoop& make,
             int exchanges, int rounds) {
  const EchoInstrument bare_peer(kind);
  const EchoInstrument peer(kind);
  BareLoop bare(bare_peer);
  const std::unique_ptr<Loop> loop = make(peer);
  bare.Run(exchanges / 10);
  loop->Run(exchanges / 10);
  const Comparison comparison = Alternate(
      rounds, [&] { return MicrosecondsEach(bare, exchanges); },
      [&] { return MicrosecondsEach(*loop, exchanges); });
  PrintAtMostMore({claim.c_str(), kBareLoop, "us"}, comparison, goal);
}

}  // namespace

BareLoop::BareLoop(const EchoInstrument& instrument) : fd_(OpenBare(instrument)) {}

BareLoop::~BareLoop() { close(fd_); }

void BareLoop::Run(int exchanges) {
  while (exchanges-- > 0) Exchange();
}

void BareLoop::Exchange() const {
  static constexpr std::string_view line = "MSV? 1,2,3\n";
  if (write(fd_, line.data(), line.size()) < 0) std::abort();
  char answer[256];
  do {
    const ssize_t got = read(fd_, answer, sizeof answer);
    if (got <= 0) std::abort();
    if (answer[got - 1] == '\n') return;
  } while (true);
}

double MicrosecondsEach(Loop& loop, int exchanges) {
  return SecondsOf([&] { loop.Run(exchanges); }) / exchanges * 1e6;
}

void CompareLines(const std::string& what, const ExchangeGoals& goals, const MakeLoop& make, int argc,
                  char** argv) {
  const int exchanges = argc > 1 ? std::atoi(argv[1]) : 20000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 15;
  PinToOneCore();
  Compare(EchoInstrument::Kind::kTcp, what + ", TCP", goals.tcp, make, exchanges, rounds);
  Compare(EchoInstrument::Kind::kPty, what + ", pty", goals.pty, make, exchanges, rounds);
}

}  // namespace kolvane::bench
