#include "terminal/ui/output_pane_announce.h"

#include "terminal/ui/output_pane.h"

namespace kolvane::terminal {

PaneAnnouncer::PaneAnnouncer() { QAccessible::installActivationObserver(this); }

PaneAnnouncer::~PaneAnnouncer() { QAccessible::removeActivationObserver(this); }

void PaneAnnouncer::Appended(OutputPane& pane, std::size_t from) {
  Replaced(pane, QString(), {from, pane.text().Length()});
  CaretMoved(pane);
}

void PaneAnnouncer::Replaced(OutputPane& pane, const QString& before, PaneRange range) {
  if (!heard_ || (before.isEmpty() && range.empty())) return;
  const int begin = pane.ToUnits(range.begin);
  const QString text = pane.TextBetween(range);
  if (before.isEmpty()) {
    QAccessibleTextInsertEvent event(&pane, begin, text);
    Send(event);
  } else if (text.isEmpty()) {
    QAccessibleTextRemoveEvent event(&pane, begin, before);
    Send(event);
  } else {
    QAccessibleTextUpdateEvent event(&pane, begin, before, text);
    Send(event);
  }
}

void PaneAnnouncer::CaretMoved(OutputPane& pane) {
  if (!heard_) return;
  const int caret = pane.ToUnits(pane.text().caret());
  const PaneRange selection = pane.text().Selection();
  QAccessibleTextSelectionEvent marked(&pane, pane.ToUnits(selection.begin), pane.ToUnits(selection.end));
  marked.setCursorPosition(caret);
  Send(marked);
  QAccessibleTextCursorEvent moved(&pane, caret);
  Send(moved);
}

}  // namespace kolvane::terminal
