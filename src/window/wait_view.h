#pragma once

#include <QCursor>
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
  QList<QAction*> copying = {};   ///< carried out at any time
  QList<QAction*> stopping = {};  ///< carried out while `can_stop`; they give up what is waited for, too
  QList<QWidget*> stop_buttons = {};
  std::function<bool()> can_stop = [] { return false; };
};

/// Keeps the window alive while the session waits on the window's own thread: events are served every 50 ms,
/// but of keys and clicks only those of WaitControls, closing and Esc, which gives up. All others are
/// dropped, so that no command starts within another one or after it.
class WaitView final : public QObject {
  Q_OBJECT

 public:
  /// `paint` brings pane and list up to date; they are painted at once then.
  WaitView(QWidget& window, StatusBars& bars, std::function<void()> paint);

  void SetControls(WaitControls controls) { controls_ = std::move(controls); }

  /// What device::WaitListener asks for.
  void PaintNow();
  bool Waiting(device::Operation operation, double seconds);
  void WaitOver();
  /// Serves events as while waiting; false once GiveUp was called.
  bool Serve();

  /// The operation in hand ends as soon as it can.
  void GiveUp() { given_up_ = true; }
  /// While events are served from within a wait: nothing may be started.
  bool IsServing() const { return serving_; }

 protected:
  bool eventFilter(QObject* target, QEvent* event) override;

 private:
  bool IsDropped(QObject* target, QEvent* event);
  bool IsKeyDropped(const QWidget& target, const QKeyEvent& event);
  bool IsMouseDropped(const QWidget& target, const QEvent& event) const;
  bool IsShortcutDropped(const QObject& target);
  bool IsReadable(const QWidget& widget) const;

  QWidget& window_;
  StatusBars& bars_;
  std::function<void()> paint_;
  WaitControls controls_;
  QPointer<QWidget> modal_;  // as the wait found it
  bool waiting_ = false;     // somebody has been called about the operation in hand
  bool serving_ = false;
  bool given_up_ = false;
  bool shown_ = false;
};

}  // namespace kolvane::window
