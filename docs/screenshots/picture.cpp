#include "picture.h"

#include <QApplication>
#include <QHash>
#include <QPainter>
#include <algorithm>
#include <stdexcept>

namespace kolvane::screenshots {
namespace {

constexpr int kTitleHeight = 26;
constexpr int kPaletteSize = 256;
constexpr int kMostColors = 4000;  // beyond, as in a colour dialog, a palette would show

using Counts = QHash<QRgb, int>;

Counts CountsOf(const QImage& image) {
  Counts counts;
  for (int y = 0; y < image.height(); ++y) {
    const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) ++counts[line[x]];
  }
  return counts;
}

// The most frequent ones; the rest are the edges of letters.
QList<QRgb> PaletteOf(const Counts& counts) {
  QList<QRgb> colors = counts.keys();
  std::sort(colors.begin(), colors.end(),
            [&counts](QRgb a, QRgb b) { return counts[a] != counts[b] ? counts[a] > counts[b] : a < b; });
  colors.resize(std::min<qsizetype>(colors.size(), kPaletteSize));
  return colors;
}

int Distance(QRgb a, QRgb b) {
  const auto square = [](int x) { return x * x; };
  return square(qRed(a) - qRed(b)) + square(qGreen(a) - qGreen(b)) + square(qBlue(a) - qBlue(b));
}

uchar NearestIn(const QList<QRgb>& palette, QRgb color) {
  const auto nearest = std::min_element(palette.begin(), palette.end(), [color](QRgb a, QRgb b) {
    return Distance(a, color) < Distance(b, color);
  });
  return static_cast<uchar>(nearest - palette.begin());
}

QImage WithFewColors(const QImage& image) {
  const QImage plain = image.convertToFormat(QImage::Format_RGB32);
  const Counts counts = CountsOf(plain);
  if (counts.size() > kMostColors) return plain;
  const QList<QRgb> palette = PaletteOf(counts);
  QHash<QRgb, uchar> places;
  for (const QRgb color : counts.keys()) places[color] = NearestIn(palette, color);
  QImage out(plain.size(), QImage::Format_Indexed8);
  out.setColorTable(palette);
  for (int y = 0; y < plain.height(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
    uchar* to = out.scanLine(y);
    for (int x = 0; x < plain.width(); ++x) to[x] = places[from[x]];
  }
  return out;
}

}  // namespace

QPixmap Grab(QWidget* widget) {
  QApplication::processEvents();
  return widget->grab();
}

QPixmap Framed(QWidget* window) {
  const QPixmap content = Grab(window);
  QPixmap out(content.width() + 2, content.height() + kTitleHeight + 1);
  out.fill(QColor(0x5b, 0x6b, 0x7c));
  QPainter painter(&out);
  const QRect bar(1, 1, content.width(), kTitleHeight - 1);
  painter.fillRect(bar, QColor(0xdd, 0xe4, 0xec));
  QFont font = QApplication::font();
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(QColor(0x26, 0x32, 0x3f));
  const QString title =
      painter.fontMetrics().elidedText(window->windowTitle(), Qt::ElideMiddle, bar.width() - 60);
  painter.drawText(bar, Qt::AlignCenter, title);
  const QRect cross(bar.right() - 18, bar.center().y() - 3, 8, 8);
  painter.drawLine(cross.topLeft(), cross.bottomRight());
  painter.drawLine(cross.topRight(), cross.bottomLeft());
  painter.drawPixmap(1, kTitleHeight, content);
  return out;
}

void Save(const QString& folder, const QString& name, const QPixmap& picture) {
  const QString file = folder + QLatin1Char('/') + name + QStringLiteral(".png");
  if (!WithFewColors(picture.toImage()).save(file, "PNG", 0))
    throw std::runtime_error("cannot write " + file.toStdString());
}

}  // namespace kolvane::screenshots
