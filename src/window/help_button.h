#pragma once

#include <QDialog>

namespace kolvane::window {

/// Adds "Hilfe" to the buttons of `dialog`: it does what F1 does there, and the dialog stays open. A dialog
/// of the platform's own has no buttons to add it to.
void AddHelpButton(QDialog& dialog);

}  // namespace kolvane::window
