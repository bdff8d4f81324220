#pragma once

#include <string>
#include <string_view>

namespace kolvane::script {

/// The log as the $ commands reach it. Whoever implements it tells the user about a file that cannot be
/// opened or written.
class ScriptLog {
 public:
  virtual ~ScriptLog() = default;
  virtual bool LogOpen() const = 0;
  /// Opens `name` (UTF-8, may be empty) for appending; called while none is open.
  virtual void OpenLog(const std::string& name) = 0;
  /// Does nothing where none is open.
  virtual void CloseLog() = 0;
  /// One line into the open log, whether lines are being recorded or not.
  virtual void WriteLogLine(std::string_view line) = 0;
};

}  // namespace kolvane::script
