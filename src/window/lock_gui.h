#pragma once

#include <QWidget>

namespace kolvane::window {

/// Disables (true) or enables whatever could disturb a running command list, by the names of the controls:
/// sending, the connection, files, options and how answers are received. What the user needs to look, type
/// and end the run stays free.
void LockGUI(QWidget& window, bool flag);

}  // namespace kolvane::window
