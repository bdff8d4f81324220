#pragma once

#include <QBasicTimer>
#include <QObject>
#include <functional>

#include "base/ui/progress_dialog.h"

namespace kolvane::base {

/// Work that may take long, done a few milliseconds at a time, so that windows and a running list are not
/// blocked. If it lasts, a dialog shows its progress and can cancel it.
class SlicedJob final : public QObject {
  Q_OBJECT

 public:
  /// What a piece of the work has reached: the share of the whole, 1 at the end, or an errno, which ends it.
  struct Reached {
    double share = 1;
    int error = 0;
  };
  struct Texts {
    QString title;
    QString what;  ///< "... werden gespeichert …"
  };

  /// `piece` takes at most a few milliseconds. If memory runs out in it, the work ends with ENOMEM.
  SlicedJob(const Texts& texts, std::function<Reached()> piece, QWidget* window);

  /// Starts the work; a little work also ends in this call.
  void Start();

 Q_SIGNALS:
  /// Emitted at the end: 0, the work's errno, or ECANCELED if the user cancelled. The job then deletes
  /// itself.
  void Ended(int error);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  Reached WorkPiece();
  void WorkSlice();
  void End(int error);

  std::function<Reached()> piece_;
  ProgressDialog progress_;
  QBasicTimer next_;
};

}  // namespace kolvane::base
