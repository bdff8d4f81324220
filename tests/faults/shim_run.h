#pragma once

#include <map>
#include <string>

#include "app/program.h"
#include "faults/faulty_instrument.h"

namespace kolvane::faults {

/// A call that the shim makes fail. See shim.cpp.
struct FailingCall {
  std::string call;
  std::string kind;  ///< see shim.cpp
  bool once = true;
};
/// The environment in which the nth such call fails and `hit_file` is then created.
std::map<std::string, std::string> ShimEnvironment(const FailingCall& failing, int nth,
                                                   const std::string& hit_file);
std::string Describe(const FailingCall& failing, int nth);

/// One run of the program with three commands, one of whose calls failed.
struct ShimRun {
  app::Outcome outcome;
  std::string log;
  bool hit = false;   ///< the program makes that many such calls
  bool hung = false;  ///< and was killed for hanging
};

/// Sends ONE, TWO and THREE as a list with a log, the `nth` such call failing; repeats it with a long
/// time-out if there was no such call.
ShimRun RunWithShim(const FailingCall& failing, int nth, FaultyInstrument& instrument);

}  // namespace kolvane::faults
