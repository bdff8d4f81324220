#include "comparison.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

namespace kolvane::bench {

BareLoop::BareLoop(const EchoInstrument& instrument, int output)
    : fd_(OpenBare(instrument)), output_(output) {}

BareLoop::~BareLoop() { close(fd_); }

void BareLoop::Run(int exchanges) {
  while (exchanges-- > 0) Exchange();
}

void BareLoop::Exchange() const {
  static constexpr std::string_view line = "MSV? 1,2,3\n";
  if (write(fd_, line.data(), line.size()) < 0) std::abort();
  char answer[256];
  std::size_t size = 0;
  do {
    const ssize_t got = read(fd_, answer + size, sizeof answer - size);
    if (got <= 0) std::abort();
    size += static_cast<std::size_t>(got);
  } while (answer[size - 1] != '\n');
  if (output_ >= 0 && write(output_, answer, size) < 0) std::abort();
}

double MicrosecondsPerExchange(Loop& loop, int exchanges) {
  return SecondsOf([&] { loop.Run(exchanges); }) / exchanges * 1e6;
}

Comparison ComparePair(EchoInstrument::Kind kind, const LoopPair& pair, int argc, char** argv) {
  const int exchanges = argc > 1 ? std::atoi(argv[1]) : 20000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 15;
  PinToOneCore();
  const EchoInstrument bare_peer(kind);
  const EchoInstrument peer(kind);
  const std::unique_ptr<Loop> bare = pair.bare(bare_peer);
  const std::unique_ptr<Loop> loop = pair.loop(peer);
  bare->Run(exchanges / 10);
  loop->Run(exchanges / 10);
  return Alternate(
      rounds, [&] { return MicrosecondsPerExchange(*bare, exchanges); },
      [&] { return MicrosecondsPerExchange(*loop, exchanges); });
}

void CompareLines(const std::string& what, const ExchangeGoals& goals, const MakeLoop& make, int argc,
                  char** argv) {
  const auto bare = [](const EchoInstrument& peer) { return std::make_unique<BareLoop>(peer); };
  const auto compare = [&](EchoInstrument::Kind kind, const std::string& claim, double goal) {
    PrintAtMostMore({claim.c_str(), kBareLoop, "us"}, ComparePair(kind, {bare, make}, argc, argv), goal);
  };
  compare(EchoInstrument::Kind::kTcp, what + ", TCP", goals.tcp);
  compare(EchoInstrument::Kind::kPty, what + ", pty", goals.pty);
}

}  // namespace kolvane::bench
