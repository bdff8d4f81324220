#include <gtest/gtest.h>

#include <QIcon>
#include <QImage>
#include <QPainter>

#include "window/images.h"

namespace kolvane::window {
namespace {

bool IsEmpty(const QPixmap& image) {
  QImage blank(image.size(), QImage::Format_ARGB32_Premultiplied);
  blank.fill(Qt::transparent);
  return image.toImage().convertToFormat(blank.format()) == blank;
}

TEST(SvgIconEngineTest, AnIconIsDrawnInWhateverSizeIsAskedFor) {
  const QIcon icon = Icon("connect");
  for (const int side : {16, 22, 44, 100}) {
    const QPixmap image = icon.pixmap(QSize(side, side), 1.0);
    EXPECT_EQ(image.size(), QSize(side, side));
    EXPECT_FALSE(IsEmpty(image)) << side;
  }
}

TEST(SvgIconEngineTest, ADisabledIconLooksOtherwise) {
  const QIcon icon = Icon("connect");
  EXPECT_NE(icon.pixmap(22, QIcon::Disabled).toImage(), icon.pixmap(22).toImage());
}

TEST(SvgIconEngineTest, IconsOfOneFileShareTheirImages) {
  EXPECT_EQ(Icon("send").pixmap(22).cacheKey(), Icon("send").pixmap(22).cacheKey());
  EXPECT_NE(Icon("send").pixmap(22).cacheKey(), Icon("connect").pixmap(22).cacheKey());
}

TEST(SvgIconEngineTest, ACopyAndAPaintedIconShowTheSame) {
  const QIcon icon = Icon("send");
  QIcon copy = icon;
  copy.addFile({});  // makes the copy one of its own
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
