#pragma once

#include <QEvent>
#include <QObject>

namespace kolvane::gui {

/// As an event filter, counts how often a widget is painted.
class PaintCounter final : public QObject {
 public:
  int paints = 0;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    paints += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
};

}  // namespace kolvane::gui
