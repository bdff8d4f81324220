#include "window/log_commands.h"

#include "base/ui/qt_text.h"
#include "window/file_dialogs.h"

namespace kolvane::window {

LogCommands::LogCommands(MainToolbar* toolbar, Menus& menus, StatusBars& status_bars,
                         terminal::OutputFlags& flags, MessagePrompt& prompt, QWidget* window)
    : QObject(window),
      toolbar_(toolbar),
      menus_(menus),
      status_bars_(status_bars),
      window_(window),
      control_(flags, prompt) {
  control_.Observe(this);
  toolbar_->Button("TB_RECORDLOG")->setCheckable(true);
  LogChanged();
}

void LogCommands::Open() {
  if (const auto name = AskOpenName(window_, OpenMode::kLog)) control_.OpenLog(*name);
}

void LogCommands::LogChanged() {
  const bool open = control_.IsOpen();
  for (QAction* item : {toolbar_->Button("TB_OPENLOG"), menus_.Item("mnuOpenLog")}) item->setEnabled(!open);
  for (QAction* item : {toolbar_->Button("TB_CLOSELOG"), menus_.Item("mnuCloseLog")}) item->setEnabled(open);
  const terminal::LogButtonState& button = control_.button();
  toolbar_->ShowState("TB_RECORDLOG", button.tag, button.image, base::ToQt(button.tool_tip));
  toolbar_->Button("TB_RECORDLOG")->setEnabled(open);
  toolbar_->Button("TB_RECORDLOG")->setChecked(button.pressed);
  status_bars_.ShowLogFile(control_.StatusText());
}

}  // namespace kolvane::window
