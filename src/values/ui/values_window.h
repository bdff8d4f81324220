#pragma once

#include <QBasicTimer>
#include <QComboBox>
#include <QElapsedTimer>
#include <QIcon>
#include <QLabel>
#include <QMainWindow>
#include <functional>
#include <string>

#include "base/prompt.h"
#include "values/curve_list.h"
#include "values/ui/curves_panel.h"
#include "values/ui/values_model.h"
#include "values/ui/values_output.h"
#include "values/ui/values_plot.h"
#include "values/ui/values_table.h"

namespace kolvane::values {

/// What the values window works on; all of it must outlive the window.
struct ValuesContext {
  Store& store;
  base::Prompt& prompt;
  std::function<QIcon(const char* name)> icon;
  std::string decimal_sign;
};

/// The window `ValuesWindow`: a store's rows as a table and as a plot, updated at most about thirty times a
/// second. Not modal, and accepts input even while its parent is modal. Closing hides it; hidden or without
/// new rows it does nothing.
class ValuesWindow final : public QMainWindow, private StoreObserver {
  Q_OBJECT

 public:
  ValuesWindow(ValuesContext context, QWidget* parent);
  ~ValuesWindow() override;

  /// Shows the window in front of all others.
  void Present();
  /// Updates everything from the store; otherwise that happens once per frame.
  void Refresh();
  /// While paused the window shows the same rows; new ones are counted and stored.
  void SetPaused(bool paused);

 protected:
  void showEvent(QShowEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  struct ActionRow;

  void StoreChanged() override;

  void BuildParts();
  void Connect();
  void BuildActions();
  void BuildPlotBar();
  QComboBox* MakeAxisList();
  QAction* AddAction(const ActionRow& row, std::function<void(bool)> action);
  QAction* FindAction(const char* name) const;

  void Copy();
  void CopyPicture();
  void SelectionChanged();
  void ViewChanged();
  void UpdateStatistics();
  void UpdateStatus();

  ValuesContext context_;
  CurveList curve_list_;
  ValuesModel* model_;
  CurvesModel* curves_model_;
  ValuesTable* table_;
  ValuesPlot* plot_;
  CurvesPanel* curves_;
  ValuesOutput* output_;
  QLabel* status_;

  RowRanges selection_;
  std::size_t shown_ = 0;  // rows
  std::uint64_t generation_;
  bool paused_ = false;
  QBasicTimer frame_;
  QElapsedTimer since_frame_;
};

}  // namespace kolvane::values
