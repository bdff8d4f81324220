#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QString>

#include "pane/pane_store.h"

namespace kolvane::pane {

class OutputPane;

/// Reports changes in a pane to assistive programs. Costs nothing while none listens.
class PaneAnnouncer : private QAccessible::ActivationObserver {
 public:
  PaneAnnouncer();
  ~PaneAnnouncer() override;
  PaneAnnouncer(const PaneAnnouncer&) = delete;
  PaneAnnouncer& operator=(const PaneAnnouncer&) = delete;

  bool IsActive() const { return active_; }
  /// The text from `from` to the end is new.
  void Appended(OutputPane& pane, std::size_t from);
  /// The text in `range` has replaced `before`.
  void Replaced(OutputPane& pane, const QString& before, PaneRange range);
  void CaretMoved(OutputPane& pane);

 protected:
  virtual void Send(QAccessibleEvent& event) { QAccessible::updateAccessibility(&event); }

 private:
  void accessibilityActiveChanged(bool active) override { active_ = active; }

  bool active_ = QAccessible::isActive();
};

/// Makes every OutputPane readable through the accessibility interfaces; further calls do nothing.
void InstallPaneAccessibility();

/// The pane as assistive programs and tests see it: an editable text. Positions are UTF-16 units, a line
/// break counting as one.
class OutputPaneAccessible : public QAccessibleWidget,
                             public QAccessibleTextInterface,
                             public QAccessibleEditableTextInterface {
 public:
  explicit OutputPaneAccessible(OutputPane* pane);

  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;
  void setText(QAccessible::Text kind, const QString& text) override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  void selection(int index, int* begin, int* end) const override;
  int selectionCount() const override;
  void addSelection(int begin, int end) override;
  void removeSelection(int index) override;
  void setSelection(int index, int begin, int end) override;
  int cursorPosition() const override;
  void setCursorPosition(int position) override;

  QString text(int begin, int end) const override;
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType type, int* begin,
                           int* end) const override;
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType type, int* begin,
                          int* end) const override;
  QString textAtOffset(int offset, QAccessible::TextBoundaryType type, int* begin, int* end) const override;
  int characterCount() const override;
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  void scrollToSubstring(int begin, int end) override;
  QString attributes(int offset, int* begin, int* end) const override;

  void deleteText(int begin, int end) override;
  void insertText(int offset, const QString& text) override;
  void replaceText(int begin, int end, const QString& text) override;

 private:
  OutputPane& pane() const;
  std::size_t OffsetOf(int offset) const;
  PaneRange Piece(std::size_t offset, QAccessible::TextBoundaryType type) const;
  QString Report(PaneRange range, int* begin, int* end) const;
};

}  // namespace kolvane::pane
