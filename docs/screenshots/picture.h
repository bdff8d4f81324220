#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

namespace kolvane::screenshots {

/// The widget as painted now, after pending events.
QPixmap Grab(QWidget* widget);

/// A top-level window as on the screen, with the window manager's frame.
QPixmap Framed(QWidget* window);

/// Writes FOLDER/NAME.png, scaled down if it is wider than a help page. Throws std::runtime_error on failure.
void Save(const QString& folder, const QString& name, const QPixmap& picture);
/// Writes it in its original size.
void SaveAsItIs(const QString& folder, const QString& name, const QPixmap& picture);

}  // namespace kolvane::screenshots
