#include "inspect/ui/bin_inspect_dialog.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <utility>

#include "inspect/caret.h"
#include "inspect/decode.h"
#include "inspect/hex_dump.h"

namespace kolvane::inspect {
namespace {

constexpr int kWindowFrame = 20;  // what a window manager may put beside the dialog

}  // namespace

BinInspectDialog::BinInspectDialog(BinInspectContext context, QWidget* parent)
    : QDialog(parent),
      context_(std::move(context)),
      area_(new InspectArea),
      formats_(new FormatFrame),
      network_order_(new QCheckBox(QStringLiteral("Daten sind in Network Byte Order (Motorola)"))) {
  setObjectName(QStringLiteral("frmBinInspect"));
  setWindowTitle(QStringLiteral("Binärdaten analysieren"));
  setSizeGripEnabled(true);
  network_order_->setObjectName(QStringLiteral("chkMotorola"));
  network_order_->setChecked(context_.state.network_order);
  connect(network_order_, &QCheckBox::toggled, this, [this](bool on) { context_.state.network_order = on; });
  auto* all = new QVBoxLayout(this);
  all->addWidget(area_, 1);
  BuildBelow(all);
  connect(area_->dump(), &DumpTextBox::Click, this, &BinInspectDialog::InspectAtCaret);
  connect(area_->dump(), &DumpTextBox::KeyUp, this, &BinInspectDialog::InspectAtCaret);
  connect(formats_, &FormatFrame::FormatClick, this, &BinInspectDialog::FormatClick);
  connect(formats_, &FormatFrame::TemplateClick, this, &BinInspectDialog::TemplateClick);
  BuildTemplateList();
  area_->dump()->setFocus();
}

// With a large font the rest has no room beside the formats.
void BinInspectDialog::BuildBelow(QVBoxLayout* all) {
  auto* below = new QBoxLayout(QBoxLayout::LeftToRight);
  QBoxLayout* side = BuildSide();
  below->addWidget(formats_);
  below->addLayout(side);
  all->addLayout(below);
  if (sizeHint().width() <= screen()->availableSize().width() - kWindowFrame) return;
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
  auto* close = new QPushButton(QStringLiteral("S&chließen"));
  close->setAutoDefault(false);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(copy_button);
  buttons->addWidget(close);
  auto* side = new QVBoxLayout;
  side->addWidget(network_order_);
  side->addStretch();
  side->addLayout(buttons);
  return side;
}

void BinInspectDialog::BuildTemplateList() {
  templates_ = ListTemplates(context_.user_folder, context_.folder);
  std::vector<std::string> names;
  for (const TemplateFile& file : templates_) names.push_back(file.name);
  formats_->EnableTemplates(!names.empty());
  formats_->SetTemplates(names);
  // The first template is in force then, though no option is chosen until the user does.
  if (!templates_.empty()) return area_->ShowLines(ClickTemplate(context_.state, 0).lines_shown);
  // What the code meant last time may have been deleted since.
  if (context_.state.format_code >= format::kTemplate) context_.state.format_code = format::kByte;
  formats_->Check(context_.state.format_code);
}

void BinInspectDialog::Initialize(std::string_view marked) {
  area_->dump()->SetDump(BuildDump(marked));
  DumpView view = area_->dump()->View();
  view.MoveTo(kFirstByte);
  area_->dump()->Show(view);
  // A template runs only at the user's wish.
  if (context_.state.format_code < format::kTemplate) Inspect();
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
  const Decoded decoded = InspectBytePattern(TemplatePath(), context_.decimal_sign, view, context_.state);
  area_->dump()->Show(view);
  if (decoded.caption) area_->SetValue(*decoded.caption);
  if (decoded.lines) area_->SetLines(*decoded.lines);
}

std::string BinInspectDialog::TemplatePath() const {
  const auto index = static_cast<std::size_t>(context_.state.format_code - format::kTemplate);
  return index < templates_.size() ? templates_[index].path : std::string();
}

void BinInspectDialog::Copy() const { QGuiApplication::clipboard()->setText(area_->TextToCopy()); }

}  // namespace kolvane::inspect
