#include "picture.h"

#include <QApplication>
#include <QEventLoop>
#include <QHash>
#include <QScreen>
#include <QTimer>
#include <QWindow>
#include <stdexcept>

namespace kolvane::screenshots {
namespace {

constexpr int kLookMs = 150;
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
  window->raise();
  window->activateWindow();
  window->repaint();
  // The window manager draws its frame when it likes and tells nobody; what no longer changes is drawn.
  QImage last;
  QEventLoop drawn;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &drawn, [&] {
    // The widget would go on saying what it was told before the frame was there.
    const QRect frame = window->windowHandle()->frameGeometry();
    const QImage now =
        window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height()).toImage();
    if (frame != window->geometry() && now == last) drawn.quit();
    last = now;
  });
  look.start(kLookMs);
  drawn.exec();
  return QPixmap::fromImage(last);
}

void Save(const QString& folder, const QString& name, const QPixmap& picture) {
  const bool wide = picture.width() > kWidest;
  SaveAsItIs(folder, name, wide ? picture.scaledToWidth(kWidest, Qt::SmoothTransformation) : picture);
}

void SaveAsItIs(const QString& folder, const QString& name, const QPixmap& picture) {
  const QString file = folder + QLatin1Char('/') + name + QStringLiteral(".png");
  if (!WithPalette(picture.toImage()).save(file, "PNG", 0))
    throw std::runtime_error("cannot write " + file.toStdString());
}

}  // namespace kolvane::screenshots
