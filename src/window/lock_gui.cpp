#include "window/lock_gui.h"

#include <QAction>
#include <QToolBar>

namespace kolvane::window {
namespace {

constexpr const char* kControls[] = {"cmdSend",          "Toolbar1",     "mnuFile",
                                     "mnuCon",           "mnuOptions",   "cmbReceiveMode",
                                     "cmbReceiveFormat", "SendTermChar", "RcvTermChar"};

constexpr const char* kToolbar3Buttons[] = {
    "TB_OPENSCRIPT", "TB_SAVESCRIPT", "TB_PRINTSCRIPT", "TB_NEWSCRIPT",
    "TB_CUT",        "TB_COPY",       "TB_PASTE",       "TB_SPECIALCOMMANDS"};

void SetLocked(const QWidget& window, bool locked) {
  for (const char* name : kControls) window.findChild<QWidget*>(QLatin1String(name))->setEnabled(!locked);
  const auto* toolbar3 = window.findChild<QToolBar*>(QStringLiteral("Toolbar3"));
  for (const char* key : kToolbar3Buttons)
    toolbar3->findChild<QAction*>(QLatin1String(key))->setEnabled(!locked);
}

}  // namespace

void GuiLock::LockGUI(bool locked) {
  if (locked) had_focus_ = window_.focusWidget();
  SetLocked(window_, locked);
  if (locked) {
    focused_instead_ = window_.focusWidget();
  } else if (had_focus_ != nullptr && window_.focusWidget() == focused_instead_) {
    had_focus_->setFocus();
  }
}

}  // namespace kolvane::window
