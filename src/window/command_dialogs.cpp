#include "window/command_dialogs.h"

#include "window/file_dialogs.h"

namespace kolvane::window {

std::optional<std::string> CommandDialogs::AskOpenName(const std::string& in_hand) {
  return window::AskOpenName(parent_, OpenMode::kCommandList, in_hand);
}

std::optional<std::string> CommandDialogs::AskSaveName(const std::string& in_hand) {
  return window::AskSaveName(parent_, SaveMode::kCommandList, in_hand);
}

}  // namespace kolvane::window
