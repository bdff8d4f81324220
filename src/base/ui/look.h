#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

#include "base/look.h"

namespace kolvane::base {

/// The colour as the screen takes it; bold is left to the font.
QColor ToQColor(Color color);

QFont FontOf(const Look& look);

/// Asks for font and text colour; false, and `look` as it was, where the user cancelled.
bool ChooseFont(QWidget* parent, Look& look);

/// The same for the background colour.
bool ChooseBackColor(QWidget* parent, Look& look);

}  // namespace kolvane::base
