#pragma once

#include <QIconEngine>
#include <QString>

namespace kolvane::window {

/// An icon from an SVG file that reads the file when it is shown first: most icons stand in menus and pages
/// that nobody opens. The images are shared by all icons of the file.
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

}  // namespace kolvane::window
