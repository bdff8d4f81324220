#pragma once

#include <functional>
#include <memory>
#include <string>

#include "echo_instrument.h"
#include "row.h"

namespace kolvane::bench {

/// The command sent to the echo instrument, and thus its answer.
inline constexpr char kCommand[] = "MSV? 1,2,3";

/// One side of a comparison.
class Loop {
 public:
  virtual ~Loop() = default;
  virtual void Run(int exchanges) = 0;
};

using MakeLoop = std::function<std::unique_ptr<Loop>(const EchoInstrument&)>;

/// Only writes, reads until the line's end, and writes the line to `output` if there is one.
class BareLoop final : public Loop {
 public:
  explicit BareLoop(const EchoInstrument& instrument, int output = -1);
  ~BareLoop() override;
  BareLoop(const BareLoop&) = delete;
  BareLoop& operator=(const BareLoop&) = delete;

  void Run(int exchanges) override;

 private:
  void Exchange() const;

  int fd_;
  int output_;
};

double MicrosecondsPerExchange(Loop& loop, int exchanges);

inline constexpr char kBareLoop[] = "bare write/read loop";

/// The two loops of one comparison.
struct LoopPair {
  MakeLoop bare;
  MakeLoop loop;
};

/// Compares both, each with its own instrument, on one processor: placement changes the figures fourfold. The
/// counts come from the command line: [exchanges a round] [rounds].
Comparison ComparePair(EchoInstrument::Kind kind, const LoopPair& pair, int argc, char** argv);

/// What an exchange may take in addition to the bare loop, microseconds: the overhead is constant, while the
/// bare loop's time differs from machine to machine.
struct ExchangeGoals {
  double tcp;
  double pty;
};

/// Compares a bare loop without output with the loop that `make` returns, over TCP and pty.
void CompareLines(const std::string& what, const ExchangeGoals& goals, const MakeLoop& make, int argc,
                  char** argv);

}  // namespace kolvane::bench
