#pragma once

#include <functional>
#include <memory>

#include "echo_instrument.h"

namespace kolvane::bench {

/// What is sent to the echo instrument, and so what it answers.
inline constexpr char kCommand[] = "MSV? 1,2,3";

/// One side of a comparison.
class Loop {
 public:
  virtual ~Loop() = default;
  virtual void Run(int exchanges) = 0;
};

using MakeLoop = std::function<std::unique_ptr<Loop>(const EchoInstrument&)>;

/// Prints a line with what an exchange costs in a bare write/read loop and in the loop that `make` connects
/// to an instrument of its own. The two alternate, `rounds` times `exchanges` each.
void Compare(EchoInstrument::Kind kind, const MakeLoop& make, int exchanges, int rounds);

/// Compares over both kinds of line, on one processor, with the counts of the command line: [exchanges a
/// round] [rounds]. Placement changes the figures fourfold, hence the one processor.
void CompareLines(const MakeLoop& make, int argc, char** argv);

}  // namespace kolvane::bench
