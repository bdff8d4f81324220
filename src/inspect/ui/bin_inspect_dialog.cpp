#include "inspect/ui/bin_inspect_dialog.h"

#include <QAction>
#include <QClipboard>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>
#include <memory>
#include <utility>

#include "base/encoding.h"
#include "base/files.h"
#include "base/ui/file_dialog.h"
#include "base/ui/qt_text.h"
#include "inspect/decode.h"
#include "inspect/hex_dump.h"
#include "inspect/template_run.h"
#include "inspect/texts.h"

namespace kolvane::inspect {
namespace {

constexpr int kWindowFrame = 20;          // what a window manager may add beside the dialog
constexpr int kTitleBar = 60;             // and above it
constexpr std::size_t kMaxColored = 200;  // fields; more would make a click slow
constexpr std::size_t kMaxLines = 2000;   // of all records together
constexpr int kMaxProblems = 3;
constexpr auto kRecordFiles = "Records";

}  // namespace

BinInspectDialog::BinInspectDialog(BinInspectContext context, QWidget* parent)
    : QDialog(parent),
      context_(std::move(context)),
      parts_(new QSplitter),
      area_(new InspectArea),
      bar_(new PositionBar),
      values_(new ValuePanel(context_.decimal_sign)),
      position_(new QLabel),
      problems_(new QLabel),
      buttons_(new BlockButtons),
      formats_(new FormatFrame),
      network_order_(new QCheckBox(QStringLiteral("Daten sind in Network Byte Order (Motorola)"))) {
  setObjectName(QStringLiteral("frmBinInspect"));
  setWindowTitle(base::ToQt(texts::kTitle));
  setSizeGripEnabled(true);
  network_order_->setObjectName(QStringLiteral("chkMotorola"));
  network_order_->setChecked(context_.state.network_order);
  connect(network_order_, &QCheckBox::toggled, this, [this](bool on) { context_.state.network_order = on; });
  auto* all = new QVBoxLayout(this);
  BuildBlock(all);
  BuildBelow(all);
  ConnectBlock();
  connect(area_->dump(), &DumpTextBox::Click, this, &BinInspectDialog::InspectAtCaret);
  connect(area_->dump(), &DumpTextBox::KeyUp, this, &BinInspectDialog::InspectAtCaret);
  connect(formats_, &FormatFrame::FormatClick, this, &BinInspectDialog::FormatClick);
  connect(formats_, &FormatFrame::TemplateClick, this, &BinInspectDialog::TemplateClick);
  BuildTemplateList();
  // From the dump to the formats, which are below it.
  formats_->FollowInTabOrder(area_->dump());
  area_->dump()->setFocus();
  const QSize room = screen()->availableSize() - QSize(kWindowFrame, kTitleBar);
  resize(sizeHint().boundedTo(room));
  ShareWidth(width() - all->contentsMargins().left() - all->contentsMargins().right());
}

// On a screen too narrow for both, the dump has its width if the values still have room for 32 bits.
void BinInspectDialog::ShareWidth(int width) {
  const int both = width - parts_->handleWidth();
  const int values = std::max(both - area_->sizeHint().width(), values_->WidthFor32Bits());
  parts_->setSizes({both - values, values});
}

void BinInspectDialog::BuildBlock(QVBoxLayout* all) {
  parts_->setObjectName(QStringLiteral("InspectSplitter"));
  parts_->addWidget(area_);
  parts_->addWidget(values_);
  parts_->setStretchFactor(0, 1);
  parts_->setCollapsible(0, false);
  position_->setObjectName(QStringLiteral("PositionLabel"));
  position_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  position_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  problems_->setObjectName(QStringLiteral("TemplateProblems"));
  problems_->setWordWrap(true);
  problems_->setTextFormat(Qt::PlainText);
  problems_->hide();
  all->addWidget(bar_);
  all->addWidget(parts_, 1);
  all->addWidget(problems_);
  all->addWidget(position_);
  block_ = new BlockView(*area_->dump(), *bar_, *values_, *position_, context_.prompt, this);
  setAcceptDrops(true);
}

void BinInspectDialog::ConnectBlock() {
  connect(block_, &BlockView::CaretSet, this, &BinInspectDialog::CaretSet);
  connect(buttons_, &BlockButtons::LoadFile, block_, &BlockView::AskForFile);
  connect(buttons_, &BlockButtons::SaveBlock, block_, &BlockView::SaveBlock);
  connect(buttons_, &BlockButtons::CopyAs, block_, &BlockView::CopyAs);
  connect(buttons_, &BlockButtons::ShowResultList, this, [this](bool shown) {
    area_->ShowLines(shown);
    if (shown) Inspect();
  });
  connect(buttons_, &BlockButtons::RepeatTemplate, this, &BinInspectDialog::RunTemplateAgain);
  connect(buttons_, &BlockButtons::SaveCsv, this, &BinInspectDialog::SaveCsv);
  connect(area_, &InspectArea::LinesShown, buttons_->result_list(), &QPushButton::setChecked);
  connect(area_, &InspectArea::LineClicked, this, &BinInspectDialog::ShowField);
  connect(&watcher_, &QFileSystemWatcher::fileChanged, this, &BinInspectDialog::TemplateChanged);
  connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] {
    if (watcher_.files().isEmpty()) TemplateChanged();
  });
}

// With a large font the buttons do not fit beside the formats.
void BinInspectDialog::BuildBelow(QVBoxLayout* all) {
  auto* below = new QBoxLayout(QBoxLayout::LeftToRight);
  QBoxLayout* side = BuildSide();
  below->addWidget(formats_);
  below->addLayout(side);
  all->addLayout(below);
  if (below->sizeHint().width() <= screen()->availableSize().width() - kWindowFrame) return;
  below->setDirection(QBoxLayout::TopToBottom);
  side->setDirection(QBoxLayout::LeftToRight);
}

QBoxLayout* BinInspectDialog::BuildSide() {
  auto* copy = new QAction(QStringLiteral("Wert &kopieren"), this);
  copy->setShortcut(QKeySequence::Copy);
  connect(copy, &QAction::triggered, this, &BinInspectDialog::Copy);
  addAction(copy);
  area_->AddToMenus(copy);
  auto* copy_button = new QPushButton(copy->text());
  copy_button->setAutoDefault(false);
  connect(copy_button, &QPushButton::clicked, copy, &QAction::trigger);
  auto* close = new QPushButton(QStringLiteral("Sch&ließen"));
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  buttons_->Add(copy_button);
  buttons_->Add(close);
  auto* side = new QVBoxLayout;
  side->addWidget(network_order_);
  side->addStretch();
  side->addWidget(buttons_);
  return side;
}

void BinInspectDialog::BuildTemplateList() {
  templates_ = ListTemplates(context_.user_folder, context_.folder);
  std::vector<std::string> names;
  for (const TemplateFile& file : templates_) names.push_back(file.name);
  formats_->EnableTemplates(!names.empty());
  formats_->SetTemplates(names);
  // The first template is then in force, although no option is checked until the user clicks one.
  if (!templates_.empty()) return area_->ShowLines(ClickTemplate(context_.state, 0).lines_shown);
  // The template used last time may have been deleted.
  if (context_.state.format_code >= format::kTemplate) context_.state.format_code = format::kByte;
  formats_->Check(context_.state.format_code);
}

void BinInspectDialog::Initialize(std::string_view selected) {
  block_->ShowDump(BuildDump(selected));
  DumpView view = area_->dump()->View();
  view.MoveTo(kFirstByte);
  area_->dump()->Show(view);
  CaretSet(true);
}

// In a new block a template runs only when the user asks for it.
void BinInspectDialog::CaretSet(bool is_new) {
  if (!is_new || context_.state.format_code < format::kTemplate) return Inspect();
  block_->CaretMoved(0);
}

void BinInspectDialog::FormatClick(int option) {
  formats_->EnableTemplates(option == format::kTemplate);
  area_->ShowLines(ClickFormat(context_.state, option, formats_->TemplateIndex()).lines_shown);
}

void BinInspectDialog::TemplateClick(int index) {
  area_->ShowLines(ClickTemplate(context_.state, index).lines_shown);
  formats_->Check(format::kTemplate);
}

void BinInspectDialog::InspectAtCaret() {
  DumpView view = area_->dump()->View();
  EnsureValidCaretPos(view);
  area_->dump()->Show(view);
  Inspect();
}

void BinInspectDialog::Inspect() {
  DumpView view = area_->dump()->View();
  const std::size_t caret = ByteAtPosition(view.caret);
  const Decoded decoded = InspectBytePattern(TemplatePath(), context_.decimal_sign, view, context_.state);
  area_->dump()->Show(view);
  if (decoded.caption) area_->SetValue(*decoded.caption);
  ShowResult(decoded, caret);
  block_->CaretMoved(view.selected);
}

void BinInspectDialog::ShowResult(const Decoded& decoded, std::size_t caret) {
  fields_.clear();
  template_ran_ = decoded.lines.has_value();
  ShowProblems(decoded.problems);
  if (!template_ran_) return area_->dump()->SetFields({});
  for (const ResultLine& field : decoded.fields) {
    const bool there = field.offset >= 0 && field.length > 0;
    fields_.push_back({there ? caret + static_cast<std::size_t>(field.offset) : caret,
                       there ? static_cast<std::size_t>(field.length) : 0});
  }
  area_->SetLines(*decoded.lines);
  if (buttons_->repeat()->isChecked()) ShowRecords();
  std::vector<ByteRange> colored(
      fields_.begin(), fields_.begin() + static_cast<std::ptrdiff_t>(std::min(fields_.size(), kMaxColored)));
  area_->dump()->SetFields(colored);
  for (std::size_t line = 0; line < colored.size(); ++line)
    area_->SetLineColor(static_cast<int>(line), area_->dump()->FieldColor(line));
  Watch();
}

// Replaces the list of the one record: shows each record with its number.
void BinInspectDialog::ShowRecords() {
  const auto parsed = LoadTemplate(TemplatePath());
  const auto length = parsed ? parsed->RecordLength() : std::nullopt;
  if (!length) return;
  const std::uint64_t begin = block_->Offset();
  const std::uint64_t end = std::min(block_->source()->size(), block_->page_offset() + kMaxDumpBytes);
  const NumberForm form{context_.state.network_order, context_.decimal_sign};
  std::vector<std::string> lines;
  fields_.clear();
  std::uint64_t at = begin;
  for (int number = 1; at < end && lines.size() < kMaxLines; ++number, at += *length) {
    for (ResultLine& line :
         RecordLines(*parsed, form, block_->source()->Read(at, std::min(*length, ByteBuffer{}.size())))) {
      lines.push_back(std::to_string(number) + ": " + std::move(line.text));
      fields_.push_back(
          {static_cast<std::size_t>(at - block_->page_offset()) + static_cast<std::size_t>(line.offset),
           static_cast<std::size_t>(line.length)});
    }
  }
  if (at < end) lines.emplace_back(base::ToWindows1252(texts::kMoreRecords));
  area_->SetLines(lines);
}

void BinInspectDialog::ShowProblems(const std::vector<TemplateProblem>& problems) {
  QStringList lines;
  for (const TemplateProblem& problem : problems) {
    if (lines.size() == kMaxProblems) break;
    lines << base::ToQt(texts::Problem(problem.line, problem.kind, base::FromWindows1252(problem.text)));
  }
  problems_->setText(lines.join(QLatin1Char('\n')));
  problems_->setVisible(!lines.isEmpty());
}

void BinInspectDialog::ShowField(int row) {
  const auto at = static_cast<std::size_t>(row);
  if (at >= fields_.size() || fields_[at].count == 0) return;
  area_->dump()->ShowHighlight(fields_[at]);
  block_->CaretMoved(area_->dump()->View().selected);
}

// Some editors replace the file by another, which is not watched yet; some remove it first, so the folder is
// watched for the new one.
void BinInspectDialog::Watch() {
  const QString path = base::ToQt(TemplatePath());
  if (path.isEmpty() || watcher_.files() == QStringList{path}) return;
  if (!watcher_.files().isEmpty()) watcher_.removePaths(watcher_.files());
  watcher_.addPaths({path, QFileInfo(path).path()});
}

void BinInspectDialog::TemplateChanged() {
  if (QFileInfo::exists(base::ToQt(TemplatePath()))) RunTemplateAgain();
}

void BinInspectDialog::RunTemplateAgain() {
  if (context_.state.format_code >= format::kTemplate && template_ran_) Inspect();
}

namespace {

constexpr std::size_t kCsvPiece = 1 << 16;

struct RecordChoice {
  std::uint64_t offset = 0;  // of the first record
  bool all = false;          // that follow it
  bool network_order = false;
};

/// Writes records as lines of CSV.
class RecordFile {
 public:
  RecordFile(std::shared_ptr<const BlockSource> source, const Template& parsed, const RecordChoice& choice,
             const std::string& name)
      : source_(std::move(source)),
        length_(*parsed.RecordLength()),
        table_(parsed),
        choice_(choice),
        open_error_(file_.Open(name)) {
    table_.AppendCsvHeader(text_);
  }

  base::SlicedJob::Reached WritePiece() {
    if (open_error_ != 0) return {0, open_error_};
    bool more = true;
    while (more && text_.size() < kCsvPiece) more = TakeRecord() && choice_.all;
    const int error = file_.Write(std::exchange(text_, {}));
    if (error != 0) return {0, error};
    if (!more) return {1, file_.Commit()};
    return {static_cast<double>(choice_.offset) / static_cast<double>(source_->size() + length_ + 1)};
  }

 private:
  bool TakeRecord() {
    const std::string record = source_->Read(choice_.offset, std::min(length_, ByteBuffer{}.size()));
    if (record.empty()) return false;
    table_.AppendCsvRecord(record, choice_.network_order, text_);
    choice_.offset += length_;
    return true;
  }

  std::shared_ptr<const BlockSource> source_;
  std::size_t length_;
  RecordTable table_;
  RecordChoice choice_;
  std::string text_;
  base::FileReplacement file_;
  int open_error_;
};

}  // namespace

void BinInspectDialog::SaveCsv() {
  const auto parsed = LoadTemplate(TemplatePath());
  if (!parsed || parsed->Fields().empty() || !parsed->RecordLength())
    return block_->ShowMessage(std::string(texts::kNothingToSave));
  const RecordChoice choice{block_->Offset(), buttons_->repeat()->isChecked(), context_.state.network_order};
  QFileDialog dialog(this, QString(), QString(), base::ToQt(texts::kCsvFiles));
  dialog.setObjectName(QStringLiteral("SaveDialog"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  base::PrepareFileDialog(dialog, kRecordFiles);
  dialog.setDefaultSuffix(QStringLiteral("csv"));
  if (dialog.exec() != QDialog::Accepted) return;
  const std::string name = base::FromQt(dialog.selectedFiles().value(0));
  const auto file = std::make_shared<RecordFile>(block_->source(), *parsed, choice, name);
  block_->StartSaving(name, [file] { return file->WritePiece(); });
}

void BinInspectDialog::dragEnterEvent(QDragEnterEvent* event) {
  const QList<QUrl> urls = event->mimeData()->urls();
  if (urls.size() == 1 && urls.front().isLocalFile()) event->acceptProposedAction();
}

void BinInspectDialog::dropEvent(QDropEvent* event) {
  event->acceptProposedAction();
  block_->LoadFile(base::FromQt(event->mimeData()->urls().value(0).toLocalFile()));
}

std::string BinInspectDialog::TemplatePath() const {
  if (context_.state.format_code < format::kTemplate) return {};
  const auto index = static_cast<std::size_t>(context_.state.format_code - format::kTemplate);
  return index < templates_.size() ? templates_[index].path : std::string();
}

void BinInspectDialog::Copy() const {
  if (const QString text = area_->TextToCopy(); !text.isEmpty()) QGuiApplication::clipboard()->setText(text);
}

}  // namespace kolvane::inspect
