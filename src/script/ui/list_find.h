#pragma once

#include <optional>
#include <vector>

#include "pane/ui/find_target.h"
#include "script/ui/command_grid.h"

namespace kolvane::script {

/// Finds and replaces in the command list; the row of the current hit is the list's current row.
class ListFind final : public pane::FindTarget {
  Q_OBJECT

 public:
  /// The grid must outlive this object or be destroyed together with it.
  explicit ListFind(CommandGrid* grid);

  void Search(std::shared_ptr<const pane::Matcher> matcher) override;
  void GoToNext() override;
  void GoToPrevious() override;
  pane::FindState State() const override;
  QString SelectedText() const override { return {}; }
  QWidget* Widget() const override { return grid_; }

  bool Replaces() const override { return true; }
  /// Not during a run.
  bool CanReplace() const override { return !grid_->list().InUse(); }
  void ReplaceCurrent(const QString& with) override;
  /// In one undo step.
  int ReplaceAll(const QString& with) override;

 private:
  struct Hit {
    int row;
    pane::PaneRange range;
    bool operator==(const Hit&) const = default;
  };

  void UpdateHits();
  void ListChanged();
  void GoTo(std::size_t hit);
  /// The first hit at or after this position; the number of hits if there is none.
  std::size_t FirstFrom(int row, std::size_t at) const;
  RowHits HitsOf(int row) const;

  CommandGrid* grid_;
  std::shared_ptr<const pane::Matcher> matcher_;
  std::vector<Hit> hits_;
  std::optional<Hit> current_;
  int origin_ = 1;  // the row where the first search started
  std::uint64_t revision_ = 0;
};

}  // namespace kolvane::script
