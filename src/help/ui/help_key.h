#pragma once

#include <QDialog>
#include <QObject>
#include <QWidget>
#include <functional>

#include "help/topics.h"

namespace kolvane::help {

/// F1 in the terminal's windows, open menus and dialogs: finds the topic of what has the focus. Other windows
/// of the application keep their F1. Active during the object's lifetime.
class HelpKey final : public QObject {
 public:
  HelpKey(QWidget* terminal, std::function<void(const HelpTarget&)> show);

  /// Where the message of a box is explained; for any other widget the target of its active action, else its
  /// own, else that of its nearest parent.
  static HelpTarget TargetOf(const QWidget* widget);

 protected:
  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  bool IsOfTerminal(const QWidget* widget) const;

  QWidget* terminal_;
  std::function<void(const HelpTarget&)> show_;
};

/// Adds "Hilfe" to the buttons of `dialog`: it acts like F1, and the dialog stays open. A native dialog has
/// no buttons to add it to.
void AddHelpButton(QDialog& dialog);

}  // namespace kolvane::help
