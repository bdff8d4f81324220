#pragma once

#include <QBasicTimer>

#include "pane/pane_search.h"
#include "pane/ui/find_target.h"
#include "pane/ui/output_pane.h"

namespace kolvane::pane {

/// Searches an output pane, in time slices between which events are served.
class PaneFind final : public FindTarget {
  Q_OBJECT

 public:
  /// The pane must outlive this object or be destroyed together with it.
  explicit PaneFind(OutputPane* pane);

  void Search(std::shared_ptr<const Matcher> matcher) override;
  void GoToNext() override;
  void GoToPrevious() override;
  FindState State() const override;
  QString SelectedText() const override;
  QWidget* Widget() const override { return pane_; }

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  enum class Jump { kNone, kNext, kPrevious };

  void GoTo(Jump jump, std::size_t from);
  bool FinishJump();
  bool IsCurrentAHit() const;
  void TextChanged(bool exchanged);
  void ShowProgress();

  OutputPane* pane_;
  PaneSearch search_;
  QBasicTimer slices_;
  std::size_t origin_ = 0;  // where the first search started
  Jump jump_ = Jump::kNone;
  std::size_t jump_from_ = 0;
  std::optional<PaneRange> current_;
};

}  // namespace kolvane::pane
