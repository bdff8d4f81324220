#include "values/ui/csv_job.h"

#include <cerrno>
#include <memory>

#include "base/files.h"
#include "base/ui/qt_text.h"
#include "values/texts.h"

namespace kolvane::values {
namespace {

constexpr std::size_t kPieceBytes = 1 << 16;

class CsvFile {
 public:
  CsvFile(const Store& store, std::size_t rows, CsvForm form, const std::string& name)
      : store_(store),
        rows_(rows),
        generation_(store.generation()),
        writer_(form, store.fields()),
        reader_(store),
        open_error_(file_.Open(name)) {
    writer_.AppendHeader(piece_);
  }

  base::SlicedJob::Reached WritePiece() {
    if (open_error_ != 0) return {0, open_error_};
    if (store_.generation() != generation_) return {0, ECANCELED};
    while (reader_.row() < rows_ && piece_.size() < kPieceBytes) writer_.Append(reader_.Next(), piece_);
    const int error = file_.Write(piece_);
    piece_.clear();
    if (error != 0) return {0, error};
    if (reader_.row() == rows_) return {1, file_.Commit()};
    return {static_cast<double>(reader_.row()) / static_cast<double>(rows_)};
  }

 private:
  const Store& store_;
  std::size_t rows_;
  std::uint64_t generation_;
  CsvWriter writer_;
  RowReader reader_;
  std::string piece_;
  base::FileReplacement file_;
  int open_error_;
};

}  // namespace

base::SlicedJob* NewCsvJob(const Store& store, std::size_t rows, CsvForm form, const std::string& name,
                           QWidget* window) {
  const auto file = std::make_shared<CsvFile>(store, rows, form, name);
  return new base::SlicedJob(
      {base::ToQt(texts::kTitle), base::ToQt(texts::kSaving)}, [file] { return file->WritePiece(); }, window);
}

}  // namespace kolvane::values
