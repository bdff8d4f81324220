#include "values/ui/csv_job.h"

#include <QElapsedTimer>
#include <QTimerEvent>
#include <cerrno>

#include "base/ui/qt_text.h"
#include "values/texts.h"

namespace kolvane::values {
namespace {

constexpr int kSliceMs = 15;
constexpr int kProgressAfterMs = 400;
constexpr int kSteps = 1000;
constexpr std::size_t kPieceBytes = 1 << 16;

}  // namespace

CsvJob::CsvJob(const Store& store, std::size_t rows, CsvForm form, QWidget* window)
    : QObject(window),
      store_(store),
      rows_(rows),
      generation_(store.generation()),
      writer_(form, store.fields()),
      reader_(store),
      progress_(base::ToQt(texts::kSaving), base::ToQt(texts::kCancel), 0, kSteps, window) {
  progress_.setObjectName(QStringLiteral("ProgressDialog"));
  progress_.setWindowTitle(base::ToQt(texts::kTitle));
  progress_.setWindowModality(Qt::WindowModal);
  progress_.setMinimumDuration(kProgressAfterMs);
  progress_.setAutoReset(false);
  progress_.setAutoClose(false);
}

void CsvJob::Start(const std::string& name) {
  if (const int error = file_.Open(name)) return End(error);
  writer_.AppendHeader(piece_);
  WriteSlice();
}

int CsvJob::WritePiece() {
  while (reader_.row() < rows_ && piece_.size() < kPieceBytes) writer_.Append(reader_.Next(), piece_);
  const int error = file_.Write(piece_);
  piece_.clear();
  return error;
}

void CsvJob::WriteSlice() {
  next_.stop();
  if (progress_.wasCanceled() || store_.generation() != generation_) return End(ECANCELED);
  QElapsedTimer slice;
  slice.start();
  do {
    if (const int error = WritePiece()) return End(error);
  } while (reader_.row() < rows_ && slice.elapsed() < kSliceMs);
  if (reader_.row() == rows_) return End(file_.Commit());
  // This serves events.
  progress_.setValue(static_cast<int>(reader_.row() * kSteps / rows_));
  next_.start(0, this);
}

void CsvJob::End(int error) {
  next_.stop();
  progress_.close();
  Q_EMIT Ended(error);
}

void CsvJob::timerEvent(QTimerEvent* event) {
  if (event->timerId() == next_.timerId()) WriteSlice();
}

}  // namespace kolvane::values
