#include "window/svg_icon_engine.h"

#include <QApplication>
#include <QPainter>
#include <QPixmapCache>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>

namespace kolvane::window {
namespace {

QPixmap Drawn(const QString& file, const QSize& size) {
  QPixmap image(size);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  QSvgRenderer(file).render(&painter);
  return image;
}

// As the style shows what is disabled or chosen.
QPixmap InMode(QIcon::Mode mode, const QPixmap& image) {
  if (mode == QIcon::Normal) return image;
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
  const QString name =
      QStringLiteral("kolvane-svg %1 %2x%3 %4").arg(file_).arg(size.width()).arg(size.height()).arg(mode);
  QPixmap image;
  if (QPixmapCache::find(name, &image)) return image;
  image = mode == QIcon::Normal ? Drawn(file_, size) : InMode(mode, pixmap(size, QIcon::Normal, {}));
  QPixmapCache::insert(name, image);
  return image;
}

}  // namespace kolvane::window
