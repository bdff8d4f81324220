#include "window/analysis_commands.h"

#include <new>

#include "base/encoding.h"
#include "base/number.h"
#include "inspect/texts.h"
#include "inspect/ui/bin_inspect_dialog.h"
#include "window/icons.h"

namespace kolvane::window {

ValuesCommand::ValuesCommand(terminal::TerminalCore& core, const terminal::LastAnswer& answer,
                             MessagePrompt& prompt, QWidget* window)
    : core_(core), answer_(answer), prompt_(prompt), parent_(window) {}

ValuesCommand::~ValuesCommand() { core_.exchange.Listen(nullptr); }

void ValuesCommand::Show(const QList<QAction*>& run_controls) {
  if (window_ == nullptr) {
    window_ = std::make_unique<values::ValuesWindow>(
        values::ValuesContext{store_, *this, Icon, base::SystemDecimalSign()}, parent_);
    window_->addActions(run_controls);
    core_.exchange.Listen(this);
  }
  window_->Present();
}

void ValuesCommand::Close() {
  if (window_ != nullptr) window_->close();
}

void ValuesCommand::ExchangeEnded(std::string_view command, const terminal::ExchangeResult& result) {
  if (result.Failed() || !result.answered) return;
  try {
    if (const auto row = maker_.Make(values::Now(core_.clock), command, answer_.text)) store_.Add(*row);
  } catch (const std::bad_alloc&) {
    // The terminal continues without this value.
  }
}

void InspectSelection(const pane::OutputPane& pane, inspect::InspectorState& state,
                      const TemplateFolders& folders, MessagePrompt& prompt, QWidget* window) {
  const std::string selected = base::ToWindows1252(pane.text().SelectedText("\r\n"));
  if (selected.empty()) return prompt.ShowMessage(inspect::texts::kNothingSelected);
  inspect::BinInspectDialog dialog(
      {state, folders.component, base::SystemDecimalSign(), folders.user, &prompt}, window);
  dialog.Initialize(selected);
  dialog.exec();
}

}  // namespace kolvane::window
