#include <gtest/gtest.h>

#include <QApplication>
#include <QIcon>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QThreadPool>
#include <cmath>

#include "window/icons.h"

namespace kolvane::window {
namespace {

bool IsEmpty(const QPixmap& image) {
  QImage transparent(image.size(), QImage::Format_ARGB32_Premultiplied);
  transparent.fill(Qt::transparent);
  return image.toImage().convertToFormat(transparent.format()) == transparent;
}

TEST(SvgIconEngineTest, AnIconIsDrawnInTheRequestedSize) {
  const QIcon icon = Icon("connect");
  for (const int side : {16, 22, 44, 100}) {
    const QPixmap image = icon.pixmap(QSize(side, side), 1.0);
    EXPECT_EQ(image.size(), QSize(side, side));
    EXPECT_FALSE(IsEmpty(image)) << side;
  }
}

TEST(ImageListAheadTest, ImagesAreCachedAsIconsDrawThem) {
  QPixmapCache::clear();
  const QImage drawn = Icon("connect").pixmap(QSize(44, 44), 1.0).toImage();
  const QString key = QStringLiteral("kolvane-svg :/icons/connect.svg 44x44 0");
  ASSERT_TRUE(QPixmapCache::find(key, nullptr));
  QPixmapCache::clear();
  {
    const ImageListAhead ahead(QSize(44, 44));
    QThreadPool::globalInstance()->waitForDone();
  }
  QCoreApplication::processEvents();
  QPixmap cached;
  ASSERT_TRUE(QPixmapCache::find(key, &cached));
  EXPECT_EQ(cached.toImage(), drawn);
}

TEST(ImageListAheadTest, ItEndsWithoutWaitingForItsTurn) {
  QThreadPool& pool = *QThreadPool::globalInstance();
  const int threads = pool.maxThreadCount();
  pool.setMaxThreadCount(1);
  QSemaphore busy;
  pool.start([&busy] { busy.acquire(); });
  { const ImageListAhead ahead(QSize(33, 33)); }
  busy.release();
  pool.waitForDone();
  QCoreApplication::processEvents();
  EXPECT_FALSE(QPixmapCache::find(QStringLiteral("kolvane-svg :/icons/connect.svg 33x33 0"), nullptr));
  pool.setMaxThreadCount(threads);
}

TEST(SvgIconEngineTest, ADisabledIconLooksDifferent) {
  const QIcon icon = Icon("connect");
  EXPECT_NE(icon.pixmap(22, QIcon::Disabled).toImage(), icon.pixmap(22).toImage());
}

// The contrast between an icon and the bar that it is on.
double Contrast(const QIcon& icon, QIcon::Mode mode, const QColor& background) {
  QImage bar(44, 44, QImage::Format_RGB32);
  bar.fill(background);
  QPainter painter(&bar);
  painter.drawPixmap(0, 0, icon.pixmap(44, mode));
  painter.end();
  double sum = 0;
  for (int y = 0; y < bar.height(); ++y) {
    for (int x = 0; x < bar.width(); ++x) sum += std::abs(qGray(bar.pixel(x, y)) - qGray(background.rgb()));
  }
  return sum;
}

TEST(SvgIconEngineTest, ADisabledIconIsFaintOnBrightAndDarkDesktops) {
  const QPalette before = QApplication::palette();
  for (const QColor& background : {QColor(239, 239, 239), QColor(53, 53, 53)}) {
    QApplication::setPalette(QPalette(background));
    QPixmapCache::clear();
    for (const char* name : {"save", "connect", "log-open", "help", "stop"}) {
      const QIcon icon = Icon(name);
      const double contrast =
          Contrast(icon, QIcon::Disabled, background) / Contrast(icon, QIcon::Normal, background);
      EXPECT_LT(contrast, 0.6) << name << ' ' << background.name().toStdString();
      EXPECT_GT(contrast, 0.05) << name << ' ' << background.name().toStdString();
    }
  }
  QApplication::setPalette(before);
  QPixmapCache::clear();
}

TEST(SvgIconEngineTest, IconsOfOneFileShareTheirImages) {
  EXPECT_EQ(Icon("send").pixmap(22).cacheKey(), Icon("send").pixmap(22).cacheKey());
  EXPECT_NE(Icon("send").pixmap(22).cacheKey(), Icon("connect").pixmap(22).cacheKey());
}

TEST(SvgIconEngineTest, ACopyAndAPaintedIconLookTheSame) {
  const QIcon icon = Icon("send");
  QIcon copy = icon;
  copy.addFile({});  // detaches the copy
  QPixmap painted(22, 22);
  painted.fill(Qt::transparent);
  QPainter painter(&painted);
  copy.paint(&painter, painted.rect());
  painter.end();
  EXPECT_EQ(painted.toImage().convertToFormat(QImage::Format_ARGB32),
            icon.pixmap(22).toImage().convertToFormat(QImage::Format_ARGB32));
}

}  // namespace
}  // namespace kolvane::window
