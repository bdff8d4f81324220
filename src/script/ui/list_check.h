#pragma once

#include <QTimer>
#include <QTreeWidget>
#include <functional>
#include <vector>

#include "script/checker/checker.h"
#include "script/ui/command_grid.h"

namespace kolvane::script {

/// What the checker found, `FindingsList`, to walk through: row, kind, text. Hidden until it is asked for.
class FindingsList final : public QTreeWidget {
  Q_OBJECT

 public:
  explicit FindingsList(QWidget* parent = nullptr);

  void Show(const std::vector<checker::Finding>& findings);

 Q_SIGNALS:
  void RowChosen(int row);
  void Closed();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

/// The check of the command list in its grid. Nothing is checked until it is asked for; from then on the list
/// is checked again a moment after each change, but not while it runs, until FindingsList is closed.
class ListCheck final : public QObject {
  Q_OBJECT

 public:
  /// `start` tells what a run would start with.
  ListCheck(CommandGrid* grid, FindingsList* findings, std::function<checker::RunStart()> start);

  /// Checks, and goes to the first row with a finding.
  void Begin();
  void End();
  /// After a run, which has left a state of its own.
  void CheckAgain();

 private:
  void Check();

  CommandGrid* grid_;
  FindingsList* findings_;
  std::function<checker::RunStart()> start_;
  QTimer delay_;
  bool live_ = false;
  std::uint64_t revision_ = 0;
};

}  // namespace kolvane::script
