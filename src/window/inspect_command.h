#pragma once

#include <QWidget>
#include <string>

#include "inspect/decode.h"
#include "pane/ui/output_pane.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// Where format templates lie.
struct TemplateFolders {
  std::string component;
  std::string user;  ///< the user's own; may be empty
};

/// "Binärdaten analysieren": opens the inspector on what is marked in the pane, or tells the user to mark
/// something. Throws RuntimeError kOverflow where too much is marked.
void InspectMarked(const pane::OutputPane& pane, inspect::InspectorState& state,
                   const TemplateFolders& folders, MessagePrompt& prompt, QWidget* window);

}  // namespace kolvane::window
