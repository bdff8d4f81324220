#pragma once

#include <QElapsedTimer>
#include <cstddef>
#include <functional>

#include "base/ui/progress_dialog.h"

namespace kolvane::window {

/// Called during long work with how much of the whole is done; returning false ends the work.
using ProgressStep = std::function<bool(std::size_t done, std::size_t whole)>;

/// A progress display that is updated at intervals, however often the work reports.
class Progress {
 public:
  Progress(QWidget* parent, const QString& label,
           int appears_after_ms = base::ProgressDialog::kAppearsAfterMs);

  /// Cheap enough to call for every line of a text. Returns false once the user has cancelled.
  bool Advance(std::size_t done, std::size_t whole);

 private:
  base::ProgressDialog dialog_;
  QElapsedTimer since_shown_;
};

}  // namespace kolvane::window
