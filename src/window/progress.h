#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <cstddef>
#include <functional>

namespace kolvane::window {

/// Called during long work with how much of the whole is done; returning false ends the work.
using ProgressStep = std::function<bool(std::size_t done, std::size_t whole)>;

/// A progress display that appears when work takes long, keeps the windows responsive and lets the user
/// cancel.
class Progress {
 public:
  static constexpr int kAppearsAfterMs = 400;

  Progress(QWidget* parent, const QString& label, int appears_after_ms = kAppearsAfterMs);

  /// Cheap enough to call for every line of a text. Returns false once the user has cancelled.
  bool Advance(std::size_t done, std::size_t whole);

 private:
  QProgressDialog dialog_;
  QElapsedTimer since_shown_;
};

}  // namespace kolvane::window
