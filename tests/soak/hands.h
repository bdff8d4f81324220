#pragma once

#include <QPointer>
#include <QTest>
#include <QWindow>

namespace kolvane::soak {

/// Mouse and keyboard as the window system reports them. Unlike QTest's, they process no other events and
/// allow that the window goes away in between.
class Hands {
 public:
  void Click(QWindow& window, Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint at) {
    Drag(window, button, modifiers, at, at);
  }

  void DoubleClick(QWindow& window, Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint at) {
    const QPointer<QWindow> guard(&window);
    Click(window, button, modifiers, at);
    time_ -= kPauseMs;
    if (guard) Click(*guard, button, modifiers, at);
  }

  void Drag(QWindow& window, Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint from,
            QPoint to) {
    const QPointer<QWindow> guard(&window);
    Mouse(guard, QEvent::MouseMove, Qt::NoButton, Qt::NoButton, modifiers, from);
    Mouse(guard, QEvent::MouseButtonPress, button, button, modifiers, from);
    if (to != from) Mouse(guard, QEvent::MouseMove, button, Qt::NoButton, modifiers, to);
    Mouse(guard, QEvent::MouseButtonRelease, Qt::NoButton, button, modifiers, to);
    time_ += kPauseMs;
  }

  static void Key(QWindow& window, Qt::Key key, Qt::KeyboardModifiers modifiers, const QString& text) {
    const QPointer<QWindow> guard(&window);
    qt_handleKeyEvent(guard, QEvent::KeyPress, key, modifiers, text);
    if (guard) qt_handleKeyEvent(guard, QEvent::KeyRelease, key, modifiers, text);
  }

 private:
  static constexpr int kPauseMs = 1000;  // longer than between the clicks of a double click

  void Mouse(const QPointer<QWindow>& window, QEvent::Type type, Qt::MouseButtons pressed,
             Qt::MouseButton button, Qt::KeyboardModifiers modifiers, QPoint at) {
    if (window)
      qt_handleMouseEvent(window, at, window->mapToGlobal(at), pressed, button, type, modifiers, ++time_);
  }

  int time_ = 0;  // ms
};

}  // namespace kolvane::soak
