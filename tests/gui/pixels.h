#pragma once

#include <QColor>
#include <QImage>
#include <QRect>

namespace kolvane::gui {

/// The number of pixels of that colour in the part of the image.
inline int Pixels(const QImage& image, const QRect& part, const QColor& color) {
  const QRect inside = part & image.rect();
  int count = 0;
  for (int y = inside.top(); y <= inside.bottom(); ++y) {
    for (int x = inside.left(); x <= inside.right(); ++x) count += image.pixelColor(x, y) == color ? 1 : 0;
  }
  return count;
}

}  // namespace kolvane::gui
