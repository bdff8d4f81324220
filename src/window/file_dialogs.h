#pragma once

#include <QWidget>
#include <optional>
#include <string>

#include "script/command_file.h"

namespace kolvane::window {

/// What an open-file dialog asks for.
enum class OpenMode {
  kCommandList = 0,
  kLog = 1,  ///< the file need not exist
  kTextFile = 2
};

/// What a save-file dialog asks for.
enum class SaveMode { kTerminal = 0, kCommandList = 1, kPdf = 2 };

/// The name that the user chose, with its folder, UTF-8; no value if the dialog was cancelled. The dialog
/// starts in the folder of the file `beside` if that exists, otherwise in the one used last for this mode.
std::optional<std::string> AskOpenName(QWidget* parent, OpenMode mode, const std::string& beside = {});

/// The same; the name of `beside` is proposed. A name without a suffix gets the mode's; replacing a file is
/// confirmed in the dialog.
std::optional<std::string> AskSaveName(QWidget* parent, SaveMode mode, const std::string& beside = {});

/// The file dialogs of the command list.
class CommandDialogs final : public script::CommandFileDialogs {
 public:
  explicit CommandDialogs(QWidget* parent) : parent_(parent) {}
  std::optional<std::string> AskOpenName(const std::string& current_file) override;
  std::optional<std::string> AskSaveName(const std::string& current_file) override;

 private:
  QWidget* parent_;
};

}  // namespace kolvane::window
