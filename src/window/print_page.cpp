#include "window/print_page.h"

#include <QDateTime>
#include <QPageRanges>

namespace kolvane::window {
namespace {

constexpr int kHeadPoints = 8;
constexpr qreal kRulePoints = 0.5;
constexpr qreal kPointsPerInch = 72;
constexpr qreal kGapLines = 0.75;  // between head or foot and the text

QFont HeadFont() {
  QFont font;
  font.setPointSize(kHeadPoints);
  return font;
}

}  // namespace

PrintPages::PrintPages(QPagedPaintDevice& device, const QString& caption)
    : device_(device),
      painter_(&device),
      font_(HeadFont()),
      metrics_(font_, &device),
      caption_(caption),
      date_(QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yyyy HH:mm"))),
      failed_(!painter_.isActive()) {
  if (!failed_) Begin();
}

void PrintPages::Begin() {
  ++page_;
  const QPageRanges ranges = device_.pageRanges();
  printed_ = ranges.isEmpty() || ranges.contains(page_);
  if (printed_) {
    if (any_printed_ && !device_.newPage()) failed_ = true;
    any_printed_ = true;
    PaintHead();
    PaintFoot();
  }
  y_ = metrics_.lineSpacing() * (1 + kGapLines);
}

void PrintPages::PaintHead() {
  painter_.setFont(font_);
  painter_.setPen(QPen(Qt::black, device_.logicalDpiY() * kRulePoints / kPointsPerInch));
  const QRectF head(0, 0, width(), metrics_.lineSpacing());
  const qreal room = width() - metrics_.horizontalAdvance(date_ + QStringLiteral("    "));
  painter_.drawText(head, Qt::AlignLeft, metrics_.elidedText(caption_, Qt::ElideMiddle, room));
  painter_.drawText(head, Qt::AlignRight, date_);
  painter_.drawLine(head.bottomLeft(), head.bottomRight());
}

void PrintPages::PaintFoot() {
  const qreal height = metrics_.lineSpacing();
  painter_.drawText(QRectF(0, device_.height() - height, width(), height), Qt::AlignHCenter,
                    QStringLiteral("Seite %1").arg(page_));
}

qreal PrintPages::PlaceRow(qreal height) {
  const qreal end = device_.height() - metrics_.lineSpacing() * (1 + kGapLines);
  const bool empty = y_ <= metrics_.lineSpacing() * (1 + kGapLines);
  // A row higher than the page goes on one of its own.
  if (y_ + height > end && !empty) Begin();
  const qreal y = y_;
  y_ += height;
  return y;
}

bool PrintPages::IsPastLast() const {
  const QPageRanges ranges = device_.pageRanges();
  return !ranges.isEmpty() && page_ > ranges.lastPage();
}

}  // namespace kolvane::window
