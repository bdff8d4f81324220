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

}  // namespace

void LockGUI(QWidget& window, bool flag) {
  for (const char* name : kControls) window.findChild<QWidget*>(QLatin1String(name))->setEnabled(!flag);
  const auto* toolbar3 = window.findChild<QToolBar*>(QStringLiteral("Toolbar3"));
  for (const char* key : kToolbar3Buttons)
    toolbar3->findChild<QAction*>(QLatin1String(key))->setEnabled(!flag);
}

}  // namespace kolvane::window
