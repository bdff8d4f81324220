#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script/script_log.h"

namespace kolvane::script {

/// A log that writes down each call. A name in `refused` cannot be opened.
class FakeScriptLog final : public ScriptLog {
 public:
  bool LogOpen() const override { return open; }
  void OpenLog(const std::string& name) override {
    calls.push_back("open " + name);
    open = name != refused;
  }
  void CloseLog() override {
    calls.emplace_back("close");
    open = false;
  }
  void WriteLogLine(std::string_view line) override { calls.push_back("write " + std::string(line)); }

  std::vector<std::string> calls;
  std::string refused = "refused";
  bool open = false;
};

}  // namespace kolvane::script
