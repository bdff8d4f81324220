#pragma once

#include <string>
#include <vector>

#include "script/command_list.h"

namespace kolvane::script {

/// Records each call: "rows 1-2", "current 3", "file".
class RecordingObserver final : public CommandListObserver {
 public:
  void RowsChanged(int first, int last) override {
    calls.push_back("rows " + std::to_string(first) + "-" + std::to_string(last));
  }
  void CurrentRowChanged(int row) override { calls.push_back("current " + std::to_string(row)); }
  void FileChanged() override { calls.emplace_back("file"); }

  std::vector<std::string> calls;
};

}  // namespace kolvane::script
