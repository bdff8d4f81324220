#pragma once

#include <QWidget>
#include <string>

#include "inspect/decode.h"
#include "pane/ui/output_pane.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// The folders of the format templates.
struct TemplateFolders {
  std::string component;
  std::string user;  ///< the user's own; may be empty
};

/// "Binärdaten analysieren": opens the inspector on the pane's selection, or asks the user to select
/// something. Throws RuntimeError kOverflow if too much is selected.
void InspectMarked(const pane::OutputPane& pane, inspect::InspectorState& state,
                   const TemplateFolders& folders, MessagePrompt& prompt, QWidget* window);

}  // namespace kolvane::window
