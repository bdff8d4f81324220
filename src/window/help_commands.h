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

/// Help for the terminal window: the toolbar button's topic, F1, and the help window, which is made when it
/// is first needed. A missing or damaged help file changes nothing and is not reported.
class HelpCommands {
 public:
  HelpCommands(QWidget* window, std::vector<std::string> folders, base::Prompt& prompt);

  /// Topic `number` of the help file `path`, of Terminal.chm in the first of the folders that has it where it
  /// is empty.
  void ShowHelp(std::int32_t number, const std::string& path = {});
  /// Called when the terminal closes.
  void Close();

 private:
  std::string DefaultFile() const;
  void ShowPlace(const std::string& path, const help::HelpPlace& place);
  help::HelpWindow& Window();

  QWidget* window_;
  std::vector<std::string> folders_;
  base::Prompt& prompt_;
  help::HelpFileCache files_;
  help::HelpKey key_;
  QPointer<help::HelpWindow> help_;
};

/// The reference of the $ commands, `TermCmdHelp.rtf`, which the pane shows in the session's place.
class CommandReference {
 public:
  /// The reference lies in the first of `folders` that has it.
  CommandReference(pane::OutputPane& pane, std::vector<std::string> folders, MessagePrompt& prompt);

  /// TB_SPECIALCOMMANDS: shows the reference, or the session's text again. What cannot be read is reported.
  void Press();

 private:
  void Show();

  pane::OutputPane& pane_;
  std::vector<std::string> folders_;
  MessagePrompt& prompt_;
};

}  // namespace kolvane::window
