#include "window/command_dialogs.h"

#include "window/file_dialogs.h"

namespace kolvane::window {

std::optional<std::string> CommandDialogs::AskOpenName() {
  return window::AskOpenName(parent_, OpenMode::kCommandList);
}

std::optional<std::string> CommandDialogs::AskSaveName() {
  return window::AskSaveName(parent_, SaveMode::kCommandList);
}

}  // namespace kolvane::window
