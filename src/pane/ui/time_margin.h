#pragma once

#include <QWidget>

namespace kolvane::pane {

class OutputPane;

/// Shows the times of a pane's lines beside its viewport.
class TimeMargin final : public QWidget {
 public:
  explicit TimeMargin(OutputPane* pane);

  /// Its width in the pane's font, pixels.
  int Width() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  OutputPane& pane_;
};

}  // namespace kolvane::pane
