#include "window/wait_view.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "base/scope_exit.h"
#include "base/ui/fields.h"
#include "pane/ui/output_pane.h"
#include "terminal/texts.h"

namespace kolvane::window {
namespace {

constexpr double kShownAfter = 0.5;  // seconds; a shorter wait would only flicker

constexpr QKeySequence::StandardKey kReadingKeys[] = {
    QKeySequence::Copy,
    QKeySequence::SelectAll,
    QKeySequence::MoveToNextChar,
    QKeySequence::MoveToPreviousChar,
    QKeySequence::MoveToNextWord,
    QKeySequence::MoveToPreviousWord,
    QKeySequence::MoveToNextLine,
    QKeySequence::MoveToPreviousLine,
    QKeySequence::MoveToNextPage,
    QKeySequence::MoveToPreviousPage,
    QKeySequence::MoveToStartOfLine,
    QKeySequence::MoveToEndOfLine,
    QKeySequence::MoveToStartOfDocument,
    QKeySequence::MoveToEndOfDocument,
    QKeySequence::SelectNextChar,
    QKeySequence::SelectPreviousChar,
    QKeySequence::SelectNextWord,
    QKeySequence::SelectPreviousWord,
    QKeySequence::SelectNextLine,
    QKeySequence::SelectPreviousLine,
    QKeySequence::SelectNextPage,
    QKeySequence::SelectPreviousPage,
    QKeySequence::SelectStartOfLine,
    QKeySequence::SelectEndOfLine,
    QKeySequence::SelectStartOfDocument,
    QKeySequence::SelectEndOfDocument,
};

bool IsReadingKey(const QKeyEvent& event) {
  return pane::ZoomOf(event) ||
         std::ranges::any_of(kReadingKeys, [&](auto key) { return event.matches(key); });
}

bool IsInput(QEvent::Type type) {
  switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return true;
    default:
      return false;
  }
}

}  // namespace

WaitView::WaitView(QWidget& window, StatusBars& bars, std::function<void()> paint)
    : QObject(&window), window_(window), bars_(bars), paint_(std::move(paint)) {}

void WaitView::PaintNow() {
  if (serving_) return;
  paint_();
  QCoreApplication::sendPostedEvents(&window_, QEvent::UpdateRequest);
}

bool WaitView::Waiting(device::Operation operation, double seconds) {
  // Shows the current row, and the lines before it.
  if (!std::exchange(waiting_, true)) paint_();
  if (seconds >= kShownAfter && operation != device::Operation::kNone) {
    bars_.ShowState(terminal::StateKind::kWait, terminal::texts::Waiting(operation, seconds));
    if (!shown_) QApplication::setOverrideCursor(Qt::WaitCursor);
    shown_ = true;
  }
  return Serve();
}

// Keys and clicks since the last call are dropped too.
void WaitView::WaitEnded() {
  if (!std::exchange(waiting_, false)) return;
  if (shown_) {
    QApplication::restoreOverrideCursor();
    bars_.ShowState(terminal::StateKind::kWait, "");
    shown_ = false;
  }
  Serve();
  given_up_ = false;
}

bool WaitView::Serve() {
  if (serving_) return true;
  serving_ = true;
  modal_ = QApplication::activeModalWidget();
  qApp->installEventFilter(this);
  const base::ScopeExit served([this] {
    qApp->removeEventFilter(this);
    serving_ = false;
  });
  QCoreApplication::processEvents();
  return !std::exchange(given_up_, false);
}

bool WaitView::eventFilter(QObject* target, QEvent* event) {
  // Native windows pass their events on to widgets.
  if (!IsInput(event->type()) || target->isWindowType() || !IsDropped(target, event)) return false;
  // One within a widget that took the drag before the wait is accepted beforehand.
  if (event->type() == QEvent::DragMove) event->ignore();
  return true;
}

bool WaitView::IsDropped(QObject* target, QEvent* event) {
  // A dialog that the host has opened since then must be answered.
  const QWidget* modal = QApplication::activeModalWidget();
  if (modal != nullptr && modal != modal_) return false;
  if (event->type() == QEvent::Shortcut) return IsShortcutDropped(*target);
  const auto* widget = qobject_cast<QWidget*>(target);
  if (widget == nullptr) return true;
  if (IsUsable(widget)) return IsDroppedInUsable(*widget, *event);
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
      return IsKeyDropped(*widget, *static_cast<QKeyEvent*>(event));
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
      return IsMouseDropped(*widget, *event);
    default:
      return true;
  }
}

bool WaitView::IsDroppedInUsable(const QWidget& target, const QEvent& event) {
  const bool in_dialog = target.window() != beside_ && target.window() != &window_;
  if (in_dialog) return false;
  switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride: {
      const auto& key = static_cast<const QKeyEvent&>(event);
      return key.key() == Qt::Key_Escape && target.window() == beside_ && IsKeyDropped(target, key);
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
      return static_cast<const QMouseEvent&>(event).button() == Qt::RightButton;
    default:
      return event.type() == QEvent::ContextMenu;
  }
}

bool WaitView::IsKeyDropped(const QWidget& target, const QKeyEvent& event) {
  if (event.type() == QEvent::KeyPress && event.key() == Qt::Key_Escape) GiveUp();
  return event.key() == Qt::Key_Escape || !IsReadable(target) || !IsReadingKey(event);
}

bool WaitView::IsMouseDropped(const QWidget& target, const QEvent& event) const {
  if (qobject_cast<const QScrollBar*>(&target) != nullptr) return false;
  if (event.type() == QEvent::Wheel) return !IsReadable(target);
  // In the list it would start an edit.
  const bool in_list = qobject_cast<const QAbstractItemView*>(target.parentWidget()) != nullptr;
  if (event.type() == QEvent::MouseButtonDblClick && in_list) return true;
  const auto& mouse = static_cast<const QMouseEvent&>(event);
  const Qt::MouseButtons used = mouse.buttons() | mouse.button();
  if (used != Qt::NoButton && used != Qt::LeftButton) return true;
  if (controls_.can_stop() && controls_.stop_buttons.contains(&target)) return false;
  return !IsReadable(target);
}

bool WaitView::IsShortcutDropped(const QObject& target) {
  const auto is_target = [&](const QAction* action) { return action == &target; };
  if (std::ranges::any_of(controls_.anytime, is_target) || IsUsable(&target)) return false;
  return !controls_.can_stop() || std::ranges::none_of(controls_.stopping, is_target);
}

bool WaitView::IsUsable(const QObject* object) const {
  const auto is_object = [&](const QWidget* usable) { return usable == object; };
  while (object != nullptr && object != beside_ && std::ranges::none_of(controls_.usable, is_object))
    object = base::OwnerOf(object);
  return object != nullptr;
}

bool WaitView::IsReadable(const QWidget& widget) const {
  return std::ranges::any_of(controls_.readable, [&](const QWidget* readable) {
    return readable == &widget || readable->isAncestorOf(&widget);
  });
}

}  // namespace kolvane::window
