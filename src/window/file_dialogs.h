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

/// The name that the user chose, with its folder, UTF-8; nothing where the dialog was cancelled. The dialog
/// starts beside the file `beside`, in the current folder where that is empty or its folder is gone.
std::optional<std::string> AskOpenName(QWidget* parent, OpenMode mode, const std::string& beside = {});

/// The same; the name of `beside` is proposed. A name without a suffix gets the mode's own; replacing a file
/// is confirmed in the dialog.
std::optional<std::string> AskSaveName(QWidget* parent, SaveMode mode, const std::string& beside = {});

}  // namespace kolvane::window
