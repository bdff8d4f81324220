#pragma once

#include <QWidget>

namespace kolvane::pane {

class OutputPane;

/// The times of a pane's lines, beside its viewport.
class TimeMargin final : public QWidget {
 public:
  explicit TimeMargin(OutputPane* pane);

  /// Pixels that it takes in the pane's font.
  int Width() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  OutputPane& pane_;
};

}  // namespace kolvane::pane
