#pragma once

#include <QColor>
#include <QFont>
#include <QWidget>

#include "base/look.h"

namespace kolvane::base {

/// The colour for the screen; the bold flag is ignored.
QColor ToQColor(Color color);

QFont FontOf(const Look& look);

/// Asks for font and text colour; false, with `look` unchanged, if the user cancelled.
bool ChooseFont(QWidget* parent, Look& look);

/// Asks for the background colour; false, with `look` unchanged, if the user cancelled.
bool ChooseBackColor(QWidget* parent, Look& look);

/// Changes the application's colour of the hints in empty fields if it does not stand out from the
/// background: Qt's palette for KDE has none of its own, so that they are black on dark desktops, too.
void EnsureReadableHints();

}  // namespace kolvane::base
