#include "window/inspect_command.h"

#include "base/encoding.h"
#include "base/number.h"
#include "inspect/texts.h"
#include "inspect/ui/bin_inspect_dialog.h"

namespace kolvane::window {

void InspectMarked(const pane::OutputPane& pane, inspect::InspectorState& state,
                   const TemplateFolders& folders, MessagePrompt& prompt, QWidget* window) {
  const std::string marked = base::ToWindows1252(pane.text().SelectedText("\r\n"));
  if (marked.empty()) return prompt.ShowMessage(inspect::texts::kNothingMarked);
  inspect::BinInspectDialog dialog(
      {state, folders.component, base::SystemDecimalSign(), folders.user, &prompt}, window);
  dialog.Initialize(marked);
  dialog.exec();
}

}  // namespace kolvane::window
