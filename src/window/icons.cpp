#include "window/icons.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QString>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>
#include <QThreadPool>
#include <algorithm>
#include <array>
#include <new>
#include <span>

namespace kolvane::window {
namespace {

QImage Drawn(const QString& file, const QSize& size) {
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  QSvgRenderer(file).render(&painter);
  return image;
}

QString CacheKey(const QString& file, const QSize& size, QIcon::Mode mode) {
  return QStringLiteral("kolvane-svg %1 %2x%3 %4").arg(file).arg(size.width()).arg(size.height()).arg(mode);
}

// Grey and nearly transparent: the style's own disabled icons stand out only on a bright bar.
QPixmap Disabled(const QPixmap& image) {
  constexpr int kPercent = 40;
  QImage faded = image.toImage().convertToFormat(QImage::Format_ARGB32);
  for (int y = 0; y < faded.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(faded.scanLine(y));
    for (QRgb& pixel : std::span(line, static_cast<std::size_t>(faded.width()))) {
      const int gray = qGray(pixel);
      pixel = qRgba(gray, gray, gray, qAlpha(pixel) * kPercent / 100);
    }
  }
  return QPixmap::fromImage(faded);
}

// `mode` is not Normal.
QPixmap InMode(QIcon::Mode mode, const QPixmap& image) {
  if (mode == QIcon::Disabled) return Disabled(image);
  QStyleOption option;
  option.palette = QGuiApplication::palette();
  return QApplication::style()->generatedIconPixmap(mode, image, &option);
}

}  // namespace

void SvgIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) {
  const qreal ratio = painter->device()->devicePixelRatio();
  QPixmap image = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
  image.setDevicePixelRatio(ratio);
  painter->drawPixmap(rect, image);
}

QPixmap SvgIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State /*state*/) {
  if (size.isEmpty()) return {};
  const QString name = CacheKey(file_, size, mode);
  QPixmap image;
  if (QPixmapCache::find(name, &image)) return image;
  image = mode == QIcon::Normal ? QPixmap::fromImage(Drawn(file_, size))
                                : InMode(mode, pixmap(size, QIcon::Normal, {}));
  QPixmapCache::insert(name, image);
  return image;
}

}  // namespace kolvane::window

// Resources of a static library exist only after this call, which must be outside every namespace.
static void NeedIcons() {
  static const bool once = [] {
    Q_INIT_RESOURCE(icons);
    return true;
  }();
  static_cast<void>(once);
}

namespace kolvane::window {
namespace {

// The toolbars' image list; the first image is number 1. The numbers for buttons whose image depends on their
// state are fixed: 14 and 16, 20 and 21, 25 and 28. No button has 26 or 27.
constexpr std::array<std::string_view, 28> kImageList = {
    "save",          "print",      "configure-connection",
    "flush",         "log-open",   "log-close",
    "inspect",       "help",       "list-new",
    "list-open",     "list-save",  "list-print",
    "cut",           "record-off", "copy",
    "record-on",     "paste",      "play",
    "single-step",   "disconnect", "connect",
    "break",         "stop",       "special-commands",
    "log-record-on", "clear",      "scan",
    "log-record-off"};

QString FileOf(std::string_view name) {
  return QStringLiteral(":/icons/%1.svg")
      .arg(QLatin1String(name.data(), static_cast<qsizetype>(name.size())));
}

}  // namespace

QIcon Icon(const char* name) {
  NeedIcons();
  return QIcon(new SvgIconEngine(FileOf(name)));
}

ImageListAhead::ImageListAhead(const QSize& size) : size_(size) {
  NeedIcons();
  setAutoDelete(false);
  QThreadPool::globalInstance()->start(this);
}

ImageListAhead::~ImageListAhead() {
  if (!QThreadPool::globalInstance()->tryTake(this)) done_.acquire();
}

void ImageListAhead::run() {
  try {
    for (const std::string_view name : kImageList) Draw(FileOf(name));
  } catch (const std::bad_alloc&) {  // then they are drawn when painted
  }
  done_.release();
}

// Pixmaps belong to the main thread.
void ImageListAhead::Draw(const QString& file) const {
  QMetaObject::invokeMethod(QCoreApplication::instance(),
                            [key = CacheKey(file, size_, QIcon::Normal), image = Drawn(file, size_)] {
                              QPixmapCache::insert(key, QPixmap::fromImage(image));
                            });
}

QIcon ImageIcon(int number) {
  const bool known = number >= 1 && static_cast<std::size_t>(number) <= kImageList.size();
  return known ? Icon(kImageList[static_cast<std::size_t>(number) - 1].data()) : QIcon();
}

int ImageNumber(std::string_view name) {
  return static_cast<int>(std::ranges::find(kImageList, name) - kImageList.begin()) + 1;
}

}  // namespace kolvane::window
