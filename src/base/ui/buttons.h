#pragma once

#include <QAbstractButton>
#include <functional>

class QToolBar;
class QToolButton;

namespace kolvane::base {

/// Carries out `command` when `button` is clicked, as long as `button` exists. Qt clicks a button 0.1 s after
/// its key, even if it has been disabled since; that click is ignored.
void OnClick(QAbstractButton* button, std::function<void()> command);

/// Gives the button behind which `bar` hides what does not fit a name, and an arrow in the colour of texts:
/// Qt's own is black, on dark desktops, too. Returns the button.
QToolButton* LabelExtension(QToolBar* bar);

}  // namespace kolvane::base
