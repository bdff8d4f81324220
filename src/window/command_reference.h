#pragma once

#include <string>
#include <vector>

#include "terminal/ui/output_pane.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// The reference of the $ commands, `TermCmdHelp.rtf`, which the pane shows in the session's place.
class CommandReference {
 public:
  /// The reference lies in the first of `folders` that has it.
  CommandReference(terminal::OutputPane& pane, std::vector<std::string> folders, MessagePrompt& prompt);

  /// TB_SPECIALCOMMANDS: shows the reference, or the session's text again. What cannot be read is told.
  void Press();

 private:
  void Show();

  terminal::OutputPane& pane_;
  std::vector<std::string> folders_;
  MessagePrompt& prompt_;
};

}  // namespace kolvane::window
