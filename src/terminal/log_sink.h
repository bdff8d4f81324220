#pragma once

#include <string_view>

namespace kolvane::terminal {

/// Takes each line that the pane shows while log recording is on.
class LogSink {
 public:
  virtual ~LogSink() = default;
  virtual void WriteLine(std::string_view line) = 0;
  /// Ends the log; nothing happens where none is open.
  virtual void Close() = 0;
};

}  // namespace kolvane::terminal
