#pragma once

#include "script/script_log.h"
#include "terminal/log_file.h"

namespace kolvane::window {

/// The log as the command list reaches it.
class ScriptLogFile final : public script::ScriptLog {
 public:
  explicit ScriptLogFile(terminal::LogFile& log) : log_(log) {}
  bool LogOpen() const override { return log_.IsOpen(); }
  void OpenLog(const std::string& name) override { static_cast<void>(log_.Open(name)); }
  void CloseLog() override { log_.Close(); }
  void WriteLogLine(std::string_view line) override { log_.WriteLine(line); }

 private:
  terminal::LogFile& log_;
};

}  // namespace kolvane::window
