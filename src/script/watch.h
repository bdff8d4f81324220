#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "script/command_list.h"
#include "script/script_state.h"

namespace kolvane::script {

/// One line of a run's state, with the lines below it. Texts are German, UTF-8.
struct WatchItem {
  std::string name;
  std::string value;
  std::vector<WatchItem> children = {};
};

/// What a run uses besides the interpreter's state.
struct WatchedSession {
  std::vector<std::string> fields;  ///< of the last answer
  std::int32_t last_result = 0;
  bool silent = false;
  bool log_open = false;
  bool log_recording = false;
};

std::vector<WatchItem> WatchItems(const CommandList& list, const InterpreterState& state,
                                  const WatchedSession& session);

/// What an earlier run has left open and the next one starts with; empty if that is nothing. `recording`:
/// $AUTOLOG has switched the log's recording on.
std::string StillOpen(const InterpreterState& state, bool silent, bool recording);

/// Progress of a run. After one second in its outermost loop, and while the passes of all open loops are
/// known, this includes an estimate of the loop's remaining time, if that is at most a year.
class RunProgress {
 public:
  /// "Zeile 12 von 240, Schleife 3 von 10, 0:42, noch etwa 1:38"; `seconds` since the start of the run.
  std::string Text(const CommandList& list, const InterpreterState& state, double seconds);

 private:
  std::string TimeLeft(const CommandList& list, const InterpreterState& state, double seconds);

  int loop_row_ = 0;           // of the outermost loop; 0: none is open
  double loop_start_ = 0;      // seconds
  double share_at_start_ = 0;  // done of the loop when first seen
};

}  // namespace kolvane::script
