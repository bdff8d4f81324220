#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <functional>
#include <string>

#include "pane/ui/output_pane.h"
#include "script/command_file.h"
#include "script/runner.h"
#include "script/script_core.h"
#include "script/ui/command_grid.h"
#include "script/ui/list_check.h"
#include "script/ui/watch_panel.h"
#include "script/watch.h"
#include "terminal/terminal_core.h"
#include "window/extras_menu.h"
#include "window/message_prompt.h"
#include "window/toolbars.h"
#include "window/unsaved_view.h"

namespace kolvane::window {

/// What the command list works on.
struct ScriptParts {
  script::ScriptState& state;
  terminal::TerminalSlices slices;
  terminal::TerminalCore& core;
  terminal::Log& log;
};

/// What it needs of the rest of the window.
struct ScriptContext {
  MessagePrompt& prompt;
  pane::OutputPane& pane;
  script::CommandFileDialogs& dialogs;
  std::function<void(bool locked)> lock_gui;
  std::function<void()> paint;  ///< shows changes at once
  std::string unsaved;          ///< where copies of unsaved lists are kept; empty: none are
  std::function<void(const std::string& text)> progress;  ///< of a run; empty: no run is in progress
  std::function<void()> run_ended;                        ///< or a step
};

/// Connects grid and Toolbar3 with the command list, its files and its runner.
class ScriptView final : public QObject, private script::RunHost {
  Q_OBJECT

 public:
  ScriptView(ScriptParts parts, ScriptContext context, ScriptToolbar* toolbar, QObject* parent);
  /// Also deletes the panel, whose grid shows this object's list.
  ~ScriptView() override;

  script::ListRecorder& recorder() { return core_.recorder; }
  script::CommandFileMenu& files() { return files_; }
  /// Carries out a command of files() after committing what is being typed into the grid.
  void OnFiles(void (script::CommandFileMenu::*command)());
  script::CommandGrid* grid() const { return grid_; }
  script::ListCheck& check() { return *check_; }
  /// Opens a command file; shows a failure.
  void OpenFile(const QString& name);
  /// Plays from the current row on, or continues a stopped run.
  void PlayFromHere();
  /// Plays up to the current row and stops before it.
  void PlayToHere();
  /// The grid with the findings of the check, and with the bar above it that offers what other windows have
  /// left unsaved.
  QWidget* panel() const { return panel_; }
  /// For the second status bar.
  std::string FileStatus() const;
  std::string LinesLeftOut() const;
  /// During a run shows its progress, at most every 200 ms.
  void ShowProgress();

  /// Called when the window closes: the copy of a modified list is kept. Returns 0 or an errno.
  int KeepUnsaved();

  bool IsRunning() const { return core_.runner.running(); }
  /// Ends a run after the current row.
  void Stop();
  /// The same, and no other run starts.
  void Abort() { core_.runner.Abort(); }
  /// Updates the grid from the list.
  void Flush() { grid_->Flush(); }

 private:
  void LockGUI(bool locked) override { context_.lock_gui(locked); }
  void RowStarts() override;
  void Yield() override;

  void ConnectButtons();
  void Run(const std::function<void(script::Runner&)>& command);
  void AfterRun();
  void ShowWatch();
  void ToggleRecording();
  void ShowRecording();

  ScriptContext context_;
  script::ScriptCore core_;
  const script::ScriptState& state_;
  const terminal::TerminalState& terminal_;
  const device::DeviceState& device_;
  const terminal::Exchange& exchange_;
  const terminal::Log& log_;
  script::CommandFileMenu files_;
  ScriptToolbar* toolbar_;
  QWidget* panel_;
  script::CommandGrid* grid_;
  UnsavedView* unsaved_;
  script::ListCheck* check_;
  script::WatchPanel* watch_;
  bool watching_ = false;  // the user has used more than playing and stepping
  QElapsedTimer since_start_;
  QElapsedTimer since_progress_;
  script::RunProgress run_progress_;
  QElapsedTimer since_events_;
  std::uint64_t exchanges_ = 0;  // that had ended at the last Yield
  QElapsedTimer since_painted_;
};

/// Adds the items of mnuExtras that work on the command list. Both must outlive the window's events.
void AddListCommands(ExtrasMenu& extras, ScriptView& script);

}  // namespace kolvane::window
