#pragma once

#include <deque>
#include <string>
#include <vector>

namespace kolvane::devlnk {

/// What one transfer of the stand-in driver does: `bytes` read, or that many characters taken of a write.
struct GpibStep {
  std::string bytes;
  int status = 0;  ///< bits as the driver sets them: 0x8000 error, 0x4000 time-out
  int error = 0;
  long system_error = 0;  ///< replaces the count
};

/// The stand-in driver's script and record. Without steps a write is taken whole, a read times out.
struct GpibScript {
  std::vector<std::string> calls;
  std::deque<GpibStep> reads;
  std::deque<GpibStep> writes;
  std::deque<GpibStep> polls;  ///< the status byte of each; 0 if none is left
  int open_error = -1;         ///< below 0: none
  int clear_error = -1;        ///< below 0: none
  long system_error = 0;
};

}  // namespace kolvane::devlnk
