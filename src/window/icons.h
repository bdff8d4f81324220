#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QRunnable>
#include <QSemaphore>
#include <QSize>
#include <QString>
#include <string_view>

namespace kolvane::window {

/// An icon that reads its SVG file when first shown, because most icons are in menus and pages that nobody
/// opens. All icons of a file share the images.
class SvgIconEngine final : public QIconEngine {
 public:
  explicit SvgIconEngine(QString file) : file_(std::move(file)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
  QIconEngine* clone() const override { return new SvgIconEngine(*this); }
  QString key() const override { return QStringLiteral("kolvane-svg"); }

 private:
  QString file_;
};

/// The icon of that name in the program's set.
QIcon Icon(const char* name);

/// The icon for a number of the toolbars' image list; an empty one for a number outside the list.
QIcon ImageIcon(int number);

/// The number of an icon in the image list.
int ImageNumber(std::string_view name);

/// The size of the toolbars' images, where there is room.
constexpr QSize kToolbarImage(22, 22);

/// Draws the toolbars' image list on another thread while the window is being built, so that it is painted
/// sooner.
class ImageListAhead final : private QRunnable {
 public:
  /// `size` is in device pixels.
  explicit ImageListAhead(const QSize& size);
  /// Waits until no image is being drawn.
  ~ImageListAhead() override;
  ImageListAhead(const ImageListAhead&) = delete;
  ImageListAhead& operator=(const ImageListAhead&) = delete;

 private:
  void run() override;
  void Draw(const QString& file) const;

  QSize size_;
  QSemaphore done_;
};

}  // namespace kolvane::window
