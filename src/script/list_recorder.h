#pragma once

#include <string_view>

#include "base/prompt.h"
#include "script/command_list.h"
#include "terminal/interactive_send.h"

namespace kolvane::script {

/// The button TB_RECORD: while it is down, commands sent by hand are recorded into the list.
class ListRecorder final : public terminal::CommandRecorder {
 public:
  ListRecorder(CommandList& list, RecordButton& button, base::Prompt& prompt)
      : list_(list), button_(button), prompt_(prompt) {}

  /// TB_RECORD was pressed.
  void Toggle();
  const RecordButton& button() const { return button_; }

  bool Recording() const override { return button_.tag == 1; }
  /// Reports a command for which the list has no room.
  void AddToScript(std::string_view command) override;

 private:
  CommandList& list_;
  RecordButton& button_;
  base::Prompt& prompt_;
};

}  // namespace kolvane::script
