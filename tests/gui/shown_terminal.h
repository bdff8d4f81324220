#pragma once

#include <QApplication>
#include <QComboBox>
#include <QMainWindow>
#include <QTest>

namespace kolvane::gui {

/// The terminal window on display, known by its name only; null if there is none.
inline QMainWindow* ShownTerminal() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->objectName() == QLatin1String("frmTerminal") && widget->isVisible())
      return qobject_cast<QMainWindow*>(widget);
  }
  return nullptr;
}

/// As a user types a command and presses Enter.
inline void TypeCommand(QMainWindow& window, const QString& command) {
  auto* box = window.findChild<QComboBox*>("cmbCommand");
  box->setCurrentText(command);
  QTest::keyClick(box, Qt::Key_Return);
}

inline QString PaneText(QMainWindow& window) {
  return window.findChild<QWidget*>("TermWin")->property("plainText").toString();
}

}  // namespace kolvane::gui
