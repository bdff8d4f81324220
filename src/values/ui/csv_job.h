#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QProgressDialog>
#include <functional>

#include "base/files.h"
#include "values/row.h"
#include "values/store.h"

namespace kolvane::values {

/// Writes rows of a store to a CSV file, a few milliseconds at a time, so that windows and a running list are
/// not blocked; the user may cancel. The file is written whole or not at all.
class CsvJob final : public QObject {
  Q_OBJECT

 public:
  /// Writes the first `rows` rows of the store.
  CsvJob(const Store& store, std::size_t rows, CsvForm form, QWidget* window);

  /// Starts writing; with few rows it also ends in this call.
  void Start(const std::string& name);

 Q_SIGNALS:
  /// Emitted at the end: 0, an errno, or ECANCELED if the user cancelled or the store was cleared. From then
  /// on the job may be deleted with deleteLater.
  void Ended(int error);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void WriteSlice();
  void End(int error);
  int WritePiece();

  const Store& store_;
  std::size_t rows_;
  std::uint64_t generation_;
  CsvWriter writer_;
  RowReader reader_;
  std::string piece_;
  base::FileReplacement file_;
  QProgressDialog progress_;
  QBasicTimer next_;
};

}  // namespace kolvane::values
