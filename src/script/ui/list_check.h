#pragma once

#include <QTimer>
#include <functional>
#include <vector>

#include "script/checker/checker.h"
#include "script/ui/command_grid.h"
#include "script/ui/info_list.h"

namespace kolvane::script {

/// The findings of the checker, `FindingsList`: row, kind, text.
class FindingsList final : public InfoList {
  Q_OBJECT

 public:
  explicit FindingsList(QWidget* parent = nullptr);

  void Show(const std::vector<checker::Finding>& findings);

 Q_SIGNALS:
  void RowChosen(int row);
};

/// Checks the command list and shows the findings in its grid. After Start the list is checked again shortly
/// after each change, but not while it runs, until FindingsList is closed.
class ListCheck final : public QObject {
  Q_OBJECT

 public:
  /// `start` returns the state that a run would start in.
  ListCheck(CommandGrid* grid, FindingsList* findings, std::function<checker::RunStart()> start);

  /// Checks, and goes to the first row with a finding.
  void Start();
  void End();
  /// To be called after a run, which changes the state that the next one starts in.
  void CheckAgain();

 private:
  void Check();

  CommandGrid* grid_;
  FindingsList* findings_;
  std::function<checker::RunStart()> start_;
  QTimer delay_{this};
  bool live_ = false;
  std::uint64_t revision_ = 0;
};

}  // namespace kolvane::script
