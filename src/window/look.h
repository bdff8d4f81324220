#pragma once

#include <QFont>
#include <QWidget>

#include "terminal/window_settings.h"

namespace kolvane::window {

QFont FontOf(const terminal::Look& look);

/// Asks for font and text colour; false, and `look` as it was, where the user cancelled.
bool ChooseFont(QWidget* parent, terminal::Look& look);

/// The same for the background colour.
bool ChooseBackColor(QWidget* parent, terminal::Look& look);

}  // namespace kolvane::window
