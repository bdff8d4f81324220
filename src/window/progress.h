#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <cstddef>
#include <functional>

namespace kolvane::window {

/// Called in the course of long work with how much of the whole is done; false ends the work.
using ProgressStep = std::function<bool(std::size_t done, std::size_t whole)>;

/// A progress display that comes up when work takes its time, keeps the windows alive meanwhile and lets the
/// user cancel.
class Progress {
 public:
  static constexpr int kAppearsAfterMs = 400;

  Progress(QWidget* parent, const QString& label, int appears_after_ms = kAppearsAfterMs);

  /// Cheap enough for every line of a text. False once the user has cancelled.
  bool Advance(std::size_t done, std::size_t whole);

 private:
  QProgressDialog dialog_;
  QElapsedTimer since_shown_;
};

}  // namespace kolvane::window
