#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/runtime_error.h"

namespace kolvane::script {

inline constexpr int kLevels = 17;  ///< $REPEAT levels 0 to 16; a list's first block is level 1

/// What the $ commands leave for later rows and later runs.
struct InterpreterState {
  std::int16_t RepeatLevel = 0;                     ///< open $REPEAT blocks; -1 after one $ENDREPEAT too many
  std::array<std::int32_t, kLevels> RepeatCount{};  ///< passes left, by level
  std::array<std::int16_t, kLevels> RepeatRow{};    ///< row of the $REPEAT, by level
  std::int16_t IfDepth = 0;                         ///< $IF... executed and not yet closed
  bool SkipRows = false;                            ///< the rows of a failed condition are skipped
  std::vector<std::string> ParamList;               ///< empty only before the first $SPLITPARAMS
  std::string ParamValue;                           ///< what $GETPARAM selected

  /// Forgets the loops and conditions that are open.
  void CloseBlocks() {
    RepeatLevel = 0;
    IfDepth = 0;
    SkipRows = false;
  }
};

/// What the buttons request of a run, and whether one is in progress.
struct RunFlags {
  bool StopRequested = false;
  bool BreakRequested = false;
  std::int16_t ScriptRunning = 0;  ///< not 0 during a run
};

/// The button TB_RECORD.
struct RecordButton {
  static constexpr int kOnImage = 16;
  static constexpr int kOffImage = 14;

  int tag = 0;  ///< 1 while sent commands are recorded
  int image = kOffImage;
};

/// The command list's part of the process-wide record.
struct ScriptState {
  InterpreterState interpreter;
  RunFlags run;
  RecordButton record;
};

/// Adds `step` to one of these counters; if its type is too small, throws RuntimeError kOverflow and leaves
/// the counter unchanged.
template <typename Counter>
void AddChecked(Counter& counter, Counter step) {
  Counter sum;
  if (__builtin_add_overflow(counter, step, &sum))
    throw base::RuntimeError(base::RuntimeError::Kind::kOverflow);
  counter = sum;
}

/// The element of a level; throws RuntimeError kSubscript if there is none.
template <typename Element, std::size_t size>
Element& At(std::array<Element, size>& array, int index) {
  if (index < 0 || static_cast<std::size_t>(index) >= size)
    throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
  return array[static_cast<std::size_t>(index)];
}

}  // namespace kolvane::script
