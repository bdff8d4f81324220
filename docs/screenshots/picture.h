#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

namespace kolvane::screenshots {

/// The widget as it is painted now, events included that are still to be handled.
QPixmap Grab(QWidget* widget);

/// A top-level window as it stands on the screen, with the window manager's frame.
QPixmap Framed(QWidget* window);

/// Writes FOLDER/NAME.png, made smaller where it is wider than a help page. Throws std::runtime_error where
/// it cannot.
void Save(const QString& folder, const QString& name, const QPixmap& picture);
/// The same in its own size.
void SaveAsItIs(const QString& folder, const QString& name, const QPixmap& picture);

}  // namespace kolvane::screenshots
