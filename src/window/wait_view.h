#pragma once

#include <QEvent>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <functional>

#include "device/waits.h"
#include "window/status_bars.h"

namespace kolvane::window {

/// What the user can do with a window while it waits.
struct WaitControls {
  QList<QWidget*> readable = {};  ///< text can be selected and scrolled in these and their children
  QList<QWidget*> usable = {};    ///< used with their children as without a wait, but for context menus
  QList<QAction*> anytime = {};   ///< carried out at any time
  QList<QAction*> stopping = {};  ///< carried out while `can_stop`; they also give up what is waited for
  QList<QWidget*> stop_buttons = {};
  std::function<bool()> can_stop = [] { return false; };
};

/// Keeps the window responsive while the session waits on the window's own thread: events are served every 50
/// ms, but of keys and clicks only those of WaitControls, of the window beside, closing and Esc, which gives
/// up. All others are dropped, so that no command starts within another one or right after it.
class WaitView final : public QObject {
  Q_OBJECT

 public:
  /// `paint` updates pane and list, which are then painted at once.
  WaitView(QWidget& window, StatusBars& bars, std::function<void()> paint);

  void SetControls(WaitControls controls) { controls_ = std::move(controls); }
  /// `window` starts no operation. It and its dialogs are used as without a wait, but for context menus,
  /// which would hold up the wait, and Esc outside the dialogs.
  void SetBeside(QWidget* window) { beside_ = window; }

  /// For device::WaitListener.
  void PaintNow();
  bool Waiting(device::Operation operation, double seconds);
  void WaitEnded();
  /// Serves events as during a wait; returns false once GiveUp was called.
  bool Serve();

  /// Ends the operation that waits as soon as possible; does nothing if none does, so that the next one is
  /// not given up instead.
  void GiveUp() { given_up_ = serving_; }
  /// While events are served within a wait: nothing may be started.
  bool IsServing() const { return serving_; }

 protected:
  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  bool IsDropped(QObject* target, QEvent* event);
  bool IsDroppedInUsable(const QWidget& target, const QEvent& event);
  bool IsKeyDropped(const QWidget& target, const QKeyEvent& event);
  bool IsMouseDropped(const QWidget& target, const QEvent& event) const;
  bool IsShortcutDropped(const QObject& target);
  bool IsReadable(const QWidget& widget) const;
  bool IsUsable(const QObject* object) const;

  QWidget& window_;
  StatusBars& bars_;
  std::function<void()> paint_;
  WaitControls controls_;
  QPointer<QWidget> beside_;
  QPointer<QWidget> modal_;  // the active one when serving began
  bool waiting_ = false;     // the current operation has reported that it waits
  bool serving_ = false;
  bool given_up_ = false;
  bool shown_ = false;
};

}  // namespace kolvane::window
