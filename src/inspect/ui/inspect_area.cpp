#include "inspect/ui/inspect_area.h"

#include "base/ui/qt_text.h"
#include "inspect/ui/byte_text.h"

namespace kolvane::inspect {
namespace {

constexpr int kTwipsPerPixel = 15;
constexpr int kGap = (100 + kTwipsPerPixel / 2) / kTwipsPerPixel;  // above the lines

constexpr int kLinesFontPoints = 11;
constexpr int kValueFontPoints = 20;
constexpr int kMinHeight = 60;  // of dump and of lines

}  // namespace

InspectArea::InspectArea(QWidget* parent)
    : QWidget(parent), dump_(new DumpTextBox(this)), lines_(new QListWidget(this)), value_(new QLabel(this)) {
  BuildLines();
  BuildValue();
}

void InspectArea::BuildLines() {
  lines_->setObjectName(QStringLiteral("lstTemplate"));
  lines_->setAccessibleName(QStringLiteral("Felder der Formatvorlage"));
  lines_->setFont(ByteFont(kLinesFontPoints));
  lines_->setUniformItemSizes(true);
  lines_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  lines_->hide();
  connect(lines_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0 && lines_->hasFocus()) Q_EMIT LineClicked(row);
  });
  connect(lines_, &QListWidget::itemClicked, this,
          [this](QListWidgetItem* item) { Q_EMIT LineClicked(lines_->row(item)); });
}

void InspectArea::BuildValue() {
  value_->setObjectName(QStringLiteral("NumDisplay"));
  value_->setAccessibleName(QStringLiteral("Wert"));
  value_->setFont(ByteFont(kValueFontPoints));
  value_->setTextFormat(Qt::PlainText);
  value_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  value_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  value_->setMargin(kGap);
  value_->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  value_->setBackgroundRole(QPalette::Base);
  value_->setAutoFillBackground(true);
  value_->setFixedHeight(value_->fontMetrics().height() + 2 * (kGap + value_->frameWidth()));
}

void InspectArea::AddToMenus(QAction* copy) {
  auto* copy_selection = new QAction(QStringLiteral("&Markierung kopieren"), this);
  connect(copy_selection, &QAction::triggered, dump_, &QPlainTextEdit::copy);
  dump_->addAction(copy_selection);
  for (QWidget* widget :
       {static_cast<QWidget*>(dump_), static_cast<QWidget*>(lines_), static_cast<QWidget*>(value_)}) {
    widget->addAction(copy);
    widget->setContextMenuPolicy(Qt::ActionsContextMenu);
  }
}

void InspectArea::ShowLines(bool shown) {
  lines_->setVisible(shown);
  LayOut();
  Q_EMIT LinesShown(shown);
}

void InspectArea::SetLines(const std::vector<std::string>& lines) {
  QStringList shown;
  shown.reserve(static_cast<qsizetype>(lines.size()));
  for (const std::string& line : lines) shown << FromBytes(line);
  lines_->clear();
  lines_->addItems(shown);
}

// The background is the colour of the field in the dump.
void InspectArea::SetLineColor(int row, const QColor& color) {
  if (QListWidgetItem* line = lines_->item(row)) line->setBackground(color);
}

void InspectArea::SetValue(const std::string& text) { value_->setText(base::ToQt(text)); }

QString InspectArea::TextToCopy() const {
  if (lines_->isHidden()) return value_->text();
  const bool selected = !lines_->selectedItems().isEmpty();
  QStringList texts;
  for (int row = 0; row < lines_->count(); ++row) {
    if (!selected || lines_->item(row)->isSelected()) texts << lines_->item(row)->text();
  }
  return texts.join(QLatin1Char('\n'));
}

QSize InspectArea::sizeHint() const { return dump_->sizeHint() + QSize(0, value_->height()); }

QSize InspectArea::minimumSizeHint() const {
  return {dump_->minimumSizeHint().width(), 2 * kMinHeight + kGap + value_->height()};
}

void InspectArea::resizeEvent(QResizeEvent*) { LayOut(); }

void InspectArea::LayOut() {
  const int value_top = height() - value_->height();
  const int lines_top = value_top / 2;
  value_->setGeometry(0, value_top, width(), value_->height());
  lines_->setGeometry(0, lines_top, width(), value_top - lines_top);
  const int dump_height = lines_->isHidden() ? value_top : lines_top - kGap;
  dump_->setGeometry(0, 0, width(), dump_height);
  dump_->ensureCursorVisible();
}

}  // namespace kolvane::inspect
