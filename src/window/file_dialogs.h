#pragma once

#include <QWidget>
#include <optional>
#include <string>

namespace kolvane::window {

/// What the open-file dialog is asked for.
enum class OpenMode {
  kCommandList = 0,
  kLog = 1,  ///< the file need not exist
  kTextFile = 2
};

/// What the save-file dialog is asked for.
enum class SaveMode { kTerminal = 0, kCommandList = 1, kPdf = 2 };

/// The name that the user chose, with its folder, UTF-8; nothing where the dialog was cancelled.
std::optional<std::string> AskOpenName(QWidget* parent, OpenMode mode);

/// The same. A name without a suffix gets the mode's own; replacing a file is confirmed in the dialog.
std::optional<std::string> AskSaveName(QWidget* parent, SaveMode mode);

}  // namespace kolvane::window
