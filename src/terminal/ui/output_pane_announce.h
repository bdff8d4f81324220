#pragma once

#include <QAccessible>
#include <QString>

#include "terminal/pane_moves.h"

namespace kolvane::terminal {

class OutputPane;

/// Tells assistive programs what changes in a pane. Costs nothing while none listens.
class PaneAnnouncer : private QAccessible::ActivationObserver {
 public:
  PaneAnnouncer();
  ~PaneAnnouncer() override;
  PaneAnnouncer(const PaneAnnouncer&) = delete;
  PaneAnnouncer& operator=(const PaneAnnouncer&) = delete;

  bool IsHeard() const { return heard_; }
  /// What stands from `from` to the end is new.
  void Appended(OutputPane& pane, std::size_t from);
  /// What stands in `range` is in place of `before`.
  void Replaced(OutputPane& pane, const QString& before, PaneRange range);
  void CaretMoved(OutputPane& pane);

 protected:
  virtual void Send(QAccessibleEvent& event) { QAccessible::updateAccessibility(&event); }

 private:
  void accessibilityActiveChanged(bool active) override { heard_ = active; }

  bool heard_ = QAccessible::isActive();
};

}  // namespace kolvane::terminal
