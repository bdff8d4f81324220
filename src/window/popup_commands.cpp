#include "window/popup_commands.h"

namespace kolvane::window {

PopupCommands::PopupCommands(Menus& menus, MessagePrompt& prompt, EditTarget& pane, QObject* parent)
    : QObject(parent), menus_(menus), prompt_(prompt), targets_{&pane, &pane} {
  Connect("mnuCopy", &EditTarget::Copy);
  Connect("mnuCut", &EditTarget::Cut);
  Connect("mnuPaste", &EditTarget::Paste);
  Connect("mnuDelete", &EditTarget::Delete);
  Connect("mnuSelectAll", &EditTarget::SelectAll);
  Connect("mnuClearAll", &EditTarget::ClearAll);
  Connect("mnuOpen", &EditTarget::Open);
  Connect("mnuPrint", &EditTarget::Print);
  Connect("mnuFont", &EditTarget::ChooseFont);
  Connect("mnuBackColor", &EditTarget::ChooseBackColor);
}

void PopupCommands::Connect(const char* item, void (EditTarget::*command)()) {
  prompt_.OnTrigger(menus_.Item(item),
                    [this, command] { (targets_.at(static_cast<std::size_t>(flag_))->*command)(); });
}

void PopupCommands::OpenPopup(int flag, const QPoint& where) {
  SetEditTarget(flag);
  menus_.Item("mnuPaste")->setEnabled(true);
  menus_.popup->popup(where);
}

}  // namespace kolvane::window
