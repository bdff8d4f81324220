#pragma once

#include <QProgressDialog>

namespace kolvane::base {

/// A progress display that appears when work takes long, keeps the windows responsive, and lets the user
/// cancel. It is closed at the end of the work, not with the last step.
class ProgressDialog final : public QProgressDialog {
  Q_OBJECT

 public:
  static constexpr int kAppearsAfterMs = 400;

  /// `what` is done: "... werden gespeichert …"
  ProgressDialog(QWidget* parent, const QString& title, const QString& what,
                 int appears_after_ms = kAppearsAfterMs);

  /// `share` of the whole is done, from 0 to 1. Serves events.
  void ShowShare(double share);
};

}  // namespace kolvane::base
