#pragma once

#include <string_view>

#include "base/prompt.h"
#include "script/command_list.h"
#include "script/interpreter.h"
#include "script/runner.h"
#include "script/script_links.h"
#include "script/texts.h"
#include "terminal/interactive_send.h"

namespace kolvane::script {

/// The button TB_RECORD: while it is down, commands sent by hand are recorded into the list.
class ListRecorder final : public terminal::CommandRecorder {
 public:
  ListRecorder(CommandList& list, RecordButton& button, base::Prompt& prompt)
      : list_(list), button_(button), prompt_(prompt) {}

  /// TB_RECORD was pressed.
  void Toggle() {
    const bool on = button_.tag == 0;
    button_.tag = on ? 1 : 0;
    button_.image = on ? RecordButton::kOnImage : RecordButton::kOffImage;
  }
  const RecordButton& button() const { return button_; }

  bool Recording() const override { return button_.tag == 1; }
  /// Reports a command for which the list has no room.
  void AddToScript(std::string_view command) override {
    if (!list_.AddToScript(command)) prompt_.ShowError(texts::kListFull);
  }

 private:
  CommandList& list_;
  RecordButton& button_;
  base::Prompt& prompt_;
};

/// An empty command list with everything that runs and records it, ready for use. What `links` refers to must
/// outlive this object.
struct ScriptCore {
  explicit ScriptCore(const ScriptLinks& links)
      : list(&links.state.run),
        errors(list, links.prompt),
        interpreter(list, errors, links),
        runner(list, interpreter, errors, links),
        recorder(list, links.state.record, links.prompt) {}

  CommandList list;
  ListErrors errors;
  Interpreter interpreter;
  Runner runner;
  ListRecorder recorder;
};

}  // namespace kolvane::script
