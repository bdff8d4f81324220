#include "inspect/ui/block_view.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <cerrno>
#include <utility>

#include "base/files.h"
#include "base/ui/file_dialog.h"
#include "base/ui/qt_text.h"
#include "inspect/byte_values.h"
#include "inspect/texts.h"

namespace kolvane::inspect {
namespace {

constexpr int kValueColumns = 3;
constexpr int kRowMargin = 4;
constexpr int kCellMargin = 10;
constexpr int kPreferredRows = 8;
constexpr int kSmallestWidth = 140;
// As long as doubles get; the integers are shorter.
constexpr auto kWidestValue = "-8.88888888888888E-308";
constexpr auto kWidest32Bits = "-8888888888";

constexpr auto kBlockFiles = "Block";

constexpr std::size_t kLongestValue = 8;
constexpr std::size_t kPiece = 1 << 16;

// Beyond it a copy takes too much memory.
constexpr std::uint64_t kMostCopied = 16u << 20;

class BlockFile {
 public:
  BlockFile(std::shared_ptr<const BlockSource> source, const std::string& name)
      : source_(std::move(source)), open_error_(file_.Open(name)) {}

  base::SlicedJob::Reached WritePiece() {
    if (open_error_ != 0) return {0, open_error_};
    if (at_ == source_->size()) return {1, file_.Commit()};
    const std::string piece = source_->Read(at_, kPiece);
    if (piece.empty()) return {0, EIO};
    at_ += piece.size();
    // The last call commits.
    return {0.999 * static_cast<double>(at_) / static_cast<double>(source_->size()), file_.Write(piece)};
  }

 private:
  std::shared_ptr<const BlockSource> source_;
  base::FileReplacement file_;
  int open_error_;
  std::uint64_t at_ = 0;
};

base::SlicedJob::Texts JobTexts(std::string_view what) {
  return {base::ToQt(texts::kTitle), base::ToQt(what)};
}

}  // namespace

ValuePanel::ValuePanel(std::string decimal_sign, QWidget* parent)
    : QTableWidget(parent), decimal_sign_(std::move(decimal_sign)) {
  setObjectName(QStringLiteral("ValuePanel"));
  setAccessibleName(base::ToQt(texts::kValues));
  setEditTriggers(NoEditTriggers);
  setSelectionMode(ExtendedSelection);
  setTabKeyNavigation(false);
  setAlternatingRowColors(true);
  setShowGrid(false);
  setWordWrap(false);
  setColumnCount(kValueColumns);
  setHorizontalHeaderLabels(
      {base::ToQt(texts::kType), base::ToQt(texts::kLittleEndian), base::ToQt(texts::kBigEndian)});
  for (int column = 0; column < kValueColumns; ++column)
    horizontalHeaderItem(column)->setToolTip(horizontalHeaderItem(column)->text());
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setTextElideMode(Qt::ElideRight);
  // Qt elides to the width of the whole header; what still does not fit is cut at the end, not at both ends.
  horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  horizontalHeader()->setSectionResizeMode(0, QHeaderView::Interactive);
  setColumnWidth(0, fontMetrics().horizontalAdvance(base::ToQt(texts::kUnsigned16)) + kCellMargin);
  const auto rows = ValueTable({}, decimal_sign_);
  setRowCount(static_cast<int>(rows.size()));
  for (int row = 0; row < rowCount(); ++row) {
    setItem(row, 0, new QTableWidgetItem(base::ToQt(rows[static_cast<std::size_t>(row)].type)));
    for (int column = 1; column < kValueColumns; ++column) {
      auto* cell = new QTableWidgetItem;
      cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
      setItem(row, column, cell);
    }
  }
}

void ValuePanel::ShowBytes(std::string_view bytes) {
  int row = 0;
  for (const ValueRow& value : ValueTable(bytes, decimal_sign_)) {
    const std::string* const texts[] = {&value.little_endian, &value.big_endian};
    for (int column = 1; column < kValueColumns; ++column) {
      const QString text = base::ToQt(*texts[column - 1]);
      item(row, column)->setText(text);
      item(row, column)->setToolTip(text);
    }
    ++row;
  }
}

int ValuePanel::WidthFor(const char* widest) const {
  const int value = fontMetrics().horizontalAdvance(QLatin1String(widest)) + kCellMargin;
  return columnWidth(0) + (kValueColumns - 1) * value + 2 * frameWidth();
}

int ValuePanel::WidthFor32Bits() const {
  return WidthFor(kWidest32Bits) + verticalScrollBar()->sizeHint().width();
}

QSize ValuePanel::sizeHint() const {
  const int rows = kPreferredRows * verticalHeader()->defaultSectionSize();
  return {WidthFor(kWidestValue), rows + horizontalHeader()->sizeHint().height() + 2 * frameWidth()};
}

QSize ValuePanel::minimumSizeHint() const {
  return {kSmallestWidth, 2 * verticalHeader()->defaultSectionSize()};
}

bool ValuePanel::event(QEvent* event) {
  // Copying the selection here takes precedence over the dialog's copy command.
  const bool key = event->type() == QEvent::ShortcutOverride;
  if (!key || !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) return QTableWidget::event(event);
  event->accept();
  return true;
}

void ValuePanel::keyPressEvent(QKeyEvent* event) {
  if (!event->matches(QKeySequence::Copy)) return QTableWidget::keyPressEvent(event);
  QGuiApplication::clipboard()->setText(SelectedText());
  event->accept();
}

QString ValuePanel::SelectedText() const {
  QStringList lines;
  for (int row = 0; row < rowCount(); ++row) {
    QStringList cells;
    for (int column = 0; column < kValueColumns; ++column) {
      if (item(row, column)->isSelected()) cells << item(row, column)->text();
    }
    if (!cells.isEmpty()) lines << cells.join(QLatin1Char('\t'));
  }
  return lines.join(QLatin1Char('\n'));
}

BlockView::BlockView(DumpTextBox& dump, PositionBar& bar, ValuePanel& values, QLabel& label,
                     base::Prompt* prompt, QWidget* window)
    : QObject(window),
      dump_(dump),
      bar_(bar),
      values_(values),
      label_(label),
      prompt_(prompt),
      window_(window) {
  connect(&bar, &PositionBar::GoTo, this, [this](const QString& typed) { GoTo(base::FromQt(typed)); });
  connect(&bar, &PositionBar::Find, this, [this](const QString& typed) { Find(base::FromQt(typed)); });
  connect(&bar, &PositionBar::TurnPage, this, &BlockView::TurnPage);
}

void BlockView::ShowDump(std::string dump) {
  bytes_ = BytesOf(dump);
  auto block = std::make_shared<BlockSource>();
  block->SetBytes(bytes_);
  source_ = std::move(block);
  page_ = 0;
  dump_.SetDump(std::move(dump));
  ShowPages();
}

void BlockView::AskForFile() {
  QFileDialog dialog(window_, QString(), QString(), base::ToQt(texts::kAllFiles));
  dialog.setObjectName(QStringLiteral("OpenDialog"));
  dialog.setFileMode(QFileDialog::ExistingFile);
  base::PrepareFileDialog(dialog, kBlockFiles);
  if (dialog.exec() == QDialog::Accepted) LoadFile(base::FromQt(dialog.selectedFiles().value(0)));
}

void BlockView::LoadFile(const std::string& name) {
  auto file = std::make_shared<BlockSource>();
  if (const int error = file->Open(name)) return ShowMessage(texts::NotRead(name, error));
  source_ = std::move(file);
  ShowPage(0, 0, true);
}

void BlockView::ShowPage(std::uint64_t page, std::size_t byte, bool replaced) {
  page_ = page;
  bytes_ = source_->Read(page_offset(), kPageBytes);
  dump_.SetDump(DumpOfBytes(bytes_));
  DumpView view = dump_.View();
  view.MoveTo(PositionOfByte(byte));
  dump_.Show(view);
  ShowPages();
  Q_EMIT CaretSet(replaced);
}

void BlockView::ShowPages() { bar_.ShowPages(page_ > 0, page_ + 1 < Pages(), Pages() > 1); }

void BlockView::TurnPage(int by) {
  const bool possible = by < 0 ? page_ > 0 : page_ + 1 < Pages();
  if (possible) ShowPage(by < 0 ? page_ - 1 : page_ + 1, 0, true);
}

std::uint64_t BlockView::Offset() const { return page_offset() + ByteAtPosition(dump_.View().caret); }

void BlockView::CaretMoved(Position value) {
  value_ = value;
  const std::size_t byte = ByteAtPosition(dump_.View().caret);
  // A value may continue on the next page.
  values_.ShowBytes(byte < bytes_.size() ? source_->Read(Offset(), kLongestValue) : "");
  const auto selected = SelectedBytes();
  // A record may reach beyond the block.
  const std::size_t value_end =
      value > 0 ? std::min(ByteAtPosition(dump_.View().caret + value - 1) + 1, bytes_.size()) : byte;
  const std::size_t in_value = value_end > byte ? value_end - byte : 0;
  std::string text = texts::PositionText(selected ? page_offset() + selected->first : Offset(),
                                         selected ? selected->count : in_value, source_->size());
  if (Pages() > 1) text += texts::Page(page_ + 1, Pages());
  label_.setText(base::ToQt(text));
}

// The selection of a decoded value does not count.
std::optional<ByteRange> BlockView::SelectedBytes() const {
  if (dump_.highlight()) return dump_.highlight();
  const DumpView view = dump_.View();
  if (view.selected == 0 || view.selected == value_) return std::nullopt;
  const std::size_t first = ByteAtPosition(view.caret);
  const std::size_t last = std::min(ByteAtPosition(view.caret + view.selected - 1) + 1, bytes_.size());
  if (first >= last) return std::nullopt;
  return ByteRange{first, last - first};
}

void BlockView::MoveTo(std::uint64_t offset) {
  const std::uint64_t page = offset / kPageBytes;
  const auto byte = static_cast<std::size_t>(offset % kPageBytes);
  if (page != page_) return ShowPage(page, byte, false);
  DumpView view = dump_.View();
  view.MoveTo(PositionOfByte(byte));
  dump_.Show(view);
  Q_EMIT CaretSet(false);
}

void BlockView::GoTo(const std::string& typed) {
  const auto offset = TypedOffset(typed, static_cast<std::int64_t>(Offset()));
  if (!offset) return label_.setText(base::ToQt(texts::NoOffset(typed)));
  if (*offset < 0 || static_cast<std::uint64_t>(*offset) >= source_->size())
    return label_.setText(base::ToQt(texts::OutsideBlock(*offset, source_->size())));
  MoveTo(static_cast<std::uint64_t>(*offset));
}

void BlockView::Find(const std::string& typed) {
  const auto bytes = SearchBytes(typed);
  if (!bytes) return label_.setText(base::ToQt(texts::NotFound(typed)));
  delete search_;
  const auto search = std::make_shared<BlockSearch>(source_, *bytes, Offset() + 1);
  search_ = new base::SlicedJob(
      JobTexts(texts::kSearching), [search] { return base::SlicedJob::Reached{search->Step()}; }, window_);
  connect(search_, &base::SlicedJob::Ended, this,
          [this, search, typed, count = bytes->size(), source = source_](int error) {
            if (error == 0 && source == source_) ShowFound(*search, typed, count);
          });
  search_->Start();
}

void BlockView::ShowFound(const BlockSearch& search, const std::string& typed, std::size_t count) {
  const auto found = search.found();
  if (!found) return label_.setText(base::ToQt(texts::NotFound(typed)));
  MoveTo(*found);
  dump_.ShowHighlight({static_cast<std::size_t>(*found - page_offset()), count});
  CaretMoved(value_);
}

void BlockView::CopyAs(CopyForm form) {
  const auto selected = SelectedBytes();
  const std::uint64_t first = selected ? page_offset() + selected->first : 0;
  const std::uint64_t end = selected ? first + selected->count : source_->size();
  if (end - first > kMostCopied) return ShowMessage(std::string(texts::kTooLongToCopy));
  const auto copy = std::make_shared<CopyText>(form, first, end - first);
  auto* job = new base::SlicedJob(
      JobTexts(texts::kCopying),
      [copy, source = source_, at = first, end]() mutable -> base::SlicedJob::Reached {
        const auto wanted = std::min<std::uint64_t>(end - at, CopyText::kPieceBytes);
        const std::string piece = source->Read(at, static_cast<std::size_t>(wanted));
        if (piece.size() < wanted) return {0, EIO};
        copy->Append(piece);
        at += wanted;
        return {at == end ? 1 : static_cast<double>(at) / static_cast<double>(end + 1)};
      },
      window_);
  connect(job, &base::SlicedJob::Ended, this, [this, copy](int error) {
    if (error == 0) return QGuiApplication::clipboard()->setText(base::ToQt(copy->text()));
    if (error != ECANCELED) ShowMessage(texts::NotCopied(error));
  });
  job->Start();
}

void BlockView::SaveBlock() {
  QFileDialog dialog(window_, QString(), QString(), base::ToQt(texts::kAllFiles));
  dialog.setObjectName(QStringLiteral("SaveDialog"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  base::PrepareFileDialog(dialog, kBlockFiles);
  if (dialog.exec() != QDialog::Accepted) return;
  const std::string name = base::FromQt(dialog.selectedFiles().value(0));
  const auto file = std::make_shared<BlockFile>(source_, name);
  StartSaving(name, [file] { return file->WritePiece(); });
}

void BlockView::StartSaving(const std::string& name, std::function<base::SlicedJob::Reached()> piece) {
  auto* job = new base::SlicedJob(JobTexts(texts::kSaving), std::move(piece), window_);
  connect(job, &base::SlicedJob::Ended, this, [this, name](int error) {
    if (error != 0 && error != ECANCELED) ShowMessage(texts::NotWritten(name, error));
  });
  job->Start();
}

void BlockView::ShowMessage(const std::string& text) {
  if (prompt_ != nullptr) return prompt_->ShowError(text);
  label_.setText(base::ToQt(text));
}

}  // namespace kolvane::inspect
