#pragma once

#include <string>

#include "app/program.h"
#include "faults/faulty_instrument.h"

namespace kolvane::faults {

/// A call that the shim lets fail. See shim.cpp.
struct FailingCall {
  std::string call;
  std::string kind;  ///< "short" or an errno
  bool once = true;
};
std::string Describe(const FailingCall& failing, int nth);

/// One run of the program with three commands, one of whose calls failed.
struct ShimRun {
  app::Outcome outcome;
  std::string log;
  bool hit = false;     ///< the program makes that many such calls
  bool hanged = false;  ///< and was killed for it
};

/// Sends ONE, TWO and THREE as a list with a log, the `nth` such call failing.
ShimRun RunWithShim(const FailingCall& failing, int nth, FaultyInstrument& instrument);

}  // namespace kolvane::faults
