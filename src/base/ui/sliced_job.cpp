#include "base/ui/sliced_job.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <cerrno>
#include <new>
#include <utility>

namespace kolvane::base {
namespace {

constexpr int kSliceMs = 15;

}  // namespace

SlicedJob::SlicedJob(const Texts& texts, std::function<Reached()> piece, QWidget* window)
    : QObject(window), piece_(std::move(piece)), progress_(window, texts.title, texts.what) {}

void SlicedJob::Start() { WorkSlice(); }

SlicedJob::Reached SlicedJob::WorkPiece() {
  try {
    return piece_();
  } catch (const std::bad_alloc&) {
    return {0, ENOMEM};
  }
}

void SlicedJob::WorkSlice() {
  next_.stop();
  if (progress_.wasCanceled()) return End(ECANCELED);
  QElapsedTimer slice;
  slice.start();
  Reached reached{0, 0};
  while (reached.share < 1 && slice.elapsed() < kSliceMs) {
    reached = WorkPiece();
    if (reached.error != 0) return End(reached.error);
  }
  if (reached.share >= 1) return End(0);
  // Serves events, so the next slice is started only after it.
  progress_.ShowShare(reached.share);
  next_.start(0, this);
}

void SlicedJob::End(int error) {
  next_.stop();
  progress_.close();
  deleteLater();
  Q_EMIT Ended(error);
}

void SlicedJob::timerEvent(QTimerEvent* event) {
  if (event->timerId() == next_.timerId()) WorkSlice();
}

}  // namespace kolvane::base
