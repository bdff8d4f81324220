#pragma once

#include <QLabel>

namespace kolvane::window {

/// A panel of a status bar. A text that is too long is shown without its middle, so that a path's file name
/// is seen; the text itself, the tool tip and what is marked stay whole.
class StatusPanel final : public QLabel {
 public:
  using QLabel::QLabel;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace kolvane::window
