#pragma once

#include <optional>
#include <string>

#include "base/prompt.h"
#include "script/command_list.h"

namespace kolvane::script {

/// The file dialogs of the command list; nothing where the user cancelled. They start beside `in_hand`, the
/// list's own file, which may be empty; that for saving proposes its name.
class CommandFileDialogs {
 public:
  virtual ~CommandFileDialogs() = default;
  virtual std::optional<std::string> AskOpenName(const std::string& in_hand) = 0;
  virtual std::optional<std::string> AskSaveName(const std::string& in_hand) = 0;
};

/// The file commands of menu and toolbar. A failure is shown by the prompt and changes nothing.
class CommandFileMenu {
 public:
  CommandFileMenu(CommandList& list, CommandFileDialogs& dialogs, base::Prompt& prompt)
      : list_(list), dialogs_(dialogs), prompt_(prompt) {}

  // Nothing happens while a run is in progress, except that Save saves.

  void New();
  void Open();
  void OpenFile(const std::string& name);
  /// A list without a name asks for one, for this once. Characters that the file cannot hold are reported
  /// first.
  void Save();
  /// Empties the chosen file and takes its name over; the rows follow with the next Save.
  void SaveAs();

 private:
  bool TellWhatTheFileLacks();

  CommandList& list_;
  CommandFileDialogs& dialogs_;
  base::Prompt& prompt_;
};

}  // namespace kolvane::script
