#include "window/help_commands.h"

#include <utility>

#include "device/folder_file.h"
#include "window/images.h"
#include "window/print_command.h"

namespace kolvane::window {

HelpCommands::HelpCommands(QWidget* window, std::vector<std::string> folders, base::Prompt& prompt)
    : window_(window),
      folders_(std::move(folders)),
      prompt_(prompt),
      access_(*this, [this] { return device::FirstFolderFile(folders_, help::kHelpFileName); }),
      key_(window, [this](const help::HelpPlace& place) { access_.ShowHelpAt(place); }) {}

void HelpCommands::Close() {
  if (help_ != nullptr) help_->hide();
}

void HelpCommands::ShowPlace(const std::string& path, const help::HelpPlace& place) {
  if (const auto file = files_.Get(path)) Window().ShowPlace(file, place);
}

help::HelpWindow& HelpCommands::Window() {
  if (help_ == nullptr) {
    const auto print = [this](const QTextDocument& page, const QString& title, QWidget* parent) {
      PrintDocument(parent, prompt_, title, page);
    };
    help_ = new help::HelpWindow({Icon, print}, window_);
  }
  return *help_;
}

}  // namespace kolvane::window
