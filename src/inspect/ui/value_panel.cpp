#include "inspect/ui/value_panel.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <utility>

#include "base/ui/qt_text.h"
#include "inspect/byte_values.h"
#include "inspect/texts.h"

namespace kolvane::inspect {
namespace {

constexpr int kValueColumns = 3;
constexpr int kRowMargin = 4;
constexpr int kCellMargin = 10;
constexpr int kRowsWanted = 8;
constexpr int kWidthWanted = 420;

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
  verticalHeader()->hide();
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowMargin);
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setTextElideMode(Qt::ElideRight);
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

QSize ValuePanel::sizeHint() const {
  const int rows = kRowsWanted * verticalHeader()->defaultSectionSize();
  return {kWidthWanted, rows + horizontalHeader()->sizeHint().height() + 2 * frameWidth()};
}

QSize ValuePanel::minimumSizeHint() const {
  return {kWidthWanted / 3, 2 * verticalHeader()->defaultSectionSize()};
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
  QGuiApplication::clipboard()->setText(MarkedText());
  event->accept();
}

QString ValuePanel::MarkedText() const {
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

}  // namespace kolvane::inspect
