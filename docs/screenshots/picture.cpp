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

// With a palette, which reduces the file to a third, if the picture has few enough colours.
QImage WithPalette(const QImage& image) {
  const QImage plain = image.convertToFormat(QImage::Format_RGB32);
  QImage out(plain.size(), QImage::Format_Indexed8);
  QHash<QRgb, qsizetype> indexes;
  QList<QRgb> palette;
  for (int y = 0; y < plain.height(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(plain.constScanLine(y));
    uchar* to = out.scanLine(y);
    for (int x = 0; x < plain.width(); ++x) {
      if (!indexes.contains(from[x])) {
        if (palette.size() == kPaletteSize) return plain;
        indexes[from[x]] = palette.size();
        palette.append(from[x]);
      }
      to[x] = static_cast<uchar>(indexes[from[x]]);
    }
  }
  out.setColorTable(palette);
  return out;
}

// A frame that the window manager has not drawn yet is of one colour.
bool ShowsFrame(const QImage& picture, int height) {
  const QImage frame = picture.copy(0, 0, picture.width(), height);
  QImage blank(frame.size(), frame.format());
  blank.fill(frame.pixelColor(0, 0));
  return height > 0 && frame != blank;
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
  // The window manager does not report when its frame is drawn: it is once there is one that no longer
  // changes.
  QImage last;
  QEventLoop drawn;
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &drawn, [&] {
    // The widget itself would return the geometry from before the frame was added.
    const QRect frame = window->windowHandle()->frameGeometry();
    const QImage now =
        window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height()).toImage();
    if (now == last && ShowsFrame(now, window->geometry().y() - frame.y())) drawn.quit();
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
