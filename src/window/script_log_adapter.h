#pragma once

#include "script/script_log.h"
#include "terminal/log_control.h"

namespace kolvane::window {

/// The log as the command list reaches it.
class ScriptLogAdapter final : public script::ScriptLog {
 public:
  explicit ScriptLogAdapter(terminal::LogControl& log) : log_(log) {}
  bool LogOpen() const override { return log_.IsOpen(); }
  void OpenLog(const std::string& name) override { log_.OpenLog(name); }
  void CloseLog() override { log_.CloseLog(); }
  void WriteLogLine(std::string_view line) override { log_.WriteLine(line); }

 private:
  terminal::LogControl& log_;
};

}  // namespace kolvane::window
