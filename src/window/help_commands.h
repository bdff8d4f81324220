#pragma once

#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <string>
#include <vector>

#include "base/prompt.h"
#include "help/help_file.h"
#include "help/ui/help_key.h"
#include "help/ui/help_window.h"
#include "pane/ui/output_pane.h"
#include "window/message_prompt.h"

namespace kolvane::window {

/// Help for the terminal window: the toolbar button's topic, F1, and the help window, which is created when
/// first needed. A missing or damaged help file has no effect and is not reported.
class HelpCommands {
 public:
  HelpCommands(QWidget* window, std::vector<std::string> folders, base::Prompt& prompt);

  /// Shows topic `number` of the help file `path`; if that is empty, of Terminal.chm in the first of the
  /// folders that has it.
  void ShowHelp(std::int32_t number, const std::string& path = {});
  /// Called when the terminal closes.
  void Close();

 private:
  std::string DefaultFile() const;
  void ShowTarget(const std::string& path, const help::HelpTarget& target);
  help::HelpWindow& Window();

  QWidget* window_;
  std::vector<std::string> folders_;
  base::Prompt& prompt_;
  help::HelpFileCache files_;
  help::HelpKey key_;
  QPointer<help::HelpWindow> help_;
};

/// The reference of the $ commands, `TermCmdHelp.rtf`, which the pane shows instead of the session.
class CommandReference {
 public:
  /// The reference is in the first of `folders` that has it.
  CommandReference(pane::OutputPane& pane, std::vector<std::string> folders, MessagePrompt& prompt);

  /// TB_SPECIALCOMMANDS: shows the reference, or the session again. Reports a file that cannot be read.
  void Press();

 private:
  void Show();

  pane::OutputPane& pane_;
  std::vector<std::string> folders_;
  MessagePrompt& prompt_;
};

}  // namespace kolvane::window
