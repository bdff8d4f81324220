#pragma once

#include <QAction>
#include <QWidget>
#include <memory>
#include <string>

#include "base/prompt.h"
#include "inspect/decode.h"
#include "pane/ui/output_pane.h"
#include "terminal/terminal_core.h"
#include "values/row.h"
#include "values/store.h"
#include "values/ui/values_window.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// "Messwerte...": from its first use on, every answer that splits into numbers is kept, and shown in a
/// window beside the terminal's. Before that nothing is kept.
class ValuesCommand final : private terminal::ExchangeListener, private base::Prompt {
 public:
  /// All arguments must outlive this object.
  ValuesCommand(terminal::TerminalCore& core, const terminal::LastAnswer& answer, MessagePrompt& prompt,
                QWidget* window);
  ~ValuesCommand() override;
  ValuesCommand(const ValuesCommand&) = delete;
  ValuesCommand& operator=(const ValuesCommand&) = delete;

  /// The keys of `run_controls` also work in the values window; they must outlive this object.
  void Show(const QList<QAction*>& run_controls);
  /// Null before the first Show.
  QWidget* window() const { return window_.get(); }
  void Close();

 private:
  void ExchangeEnded(std::string_view command, const terminal::ExchangeResult& result) override;
  void ShowError(std::string_view text) override { prompt_.ShowErrorBeside(window(), text); }
  void ShowMessage(std::string_view text) override { prompt_.ShowMessage(text); }

  terminal::TerminalCore& core_;
  const terminal::LastAnswer& answer_;
  MessagePrompt& prompt_;
  QWidget* parent_;
  values::Store store_;
  values::RowMaker maker_;
  std::unique_ptr<values::ValuesWindow> window_;  // destroyed before the store
};

/// The folders of the format templates.
struct TemplateFolders {
  std::string component;
  std::string user;  ///< the user's own; may be empty
};

/// "Binärdaten analysieren": opens the inspector on the pane's selection, or asks the user to select
/// something. Throws RuntimeError kOverflow if too much is selected.
void InspectSelection(const pane::OutputPane& pane, inspect::InspectorState& state,
                      const TemplateFolders& folders, MessagePrompt& prompt, QWidget* window);

}  // namespace kolvane::window
