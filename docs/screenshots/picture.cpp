#include "picture.h"

#include <QApplication>
#include <QHash>
#include <QPainter>
#include <stdexcept>

namespace kolvane::screenshots {
namespace {

constexpr int kTitleHeight = 26;
constexpr int kWidest = 650;  // what the help window shows without scrolling
constexpr qsizetype kPaletteSize = 256;

// In a palette, which makes the file a third of its size, where the picture has no more colours than one
// holds.
QImage WithPalette(const QImage& image) {
  const QImage plain = image.convertToFormat(QImage::Format_RGB32);
  QImage out(plain.size(), QImage::Format_Indexed8);
  QHash<QRgb, qsizetype> places;
  QList<QRgb> palette;
  for (int y = 0; y < plain.height(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
    uchar* to = out.scanLine(y);
    for (int x = 0; x < plain.width(); ++x) {
      if (!places.contains(from[x])) {
        if (palette.size() == kPaletteSize) return plain;
        places[from[x]] = palette.size();
        palette.append(from[x]);
      }
      to[x] = static_cast<uchar>(places[from[x]]);
    }
  }
  out.setColorTable(palette);
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
  QImage image = picture.toImage();
  if (image.width() > kWidest) image = image.scaledToWidth(kWidest, Qt::SmoothTransformation);
  if (!WithPalette(image).save(file, "PNG", 0))
    throw std::runtime_error("cannot write " + file.toStdString());
}

}  // namespace kolvane::screenshots
