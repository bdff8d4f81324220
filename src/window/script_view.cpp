#include "window/script_view.h"

#include <QCoreApplication>
#include <QVBoxLayout>
#include <utility>

#include "base/ui/qt_text.h"
#include "script/texts.h"

namespace kolvane::window {
namespace {

// After rows without an exchange. Checking for events after each of them would cost more than the rows.
constexpr int kEventIntervalMs = 4;
constexpr int kProgressMs = 200;
constexpr int kFrameMs = 16;

script::ScriptLinks LinksOf(const ScriptParts& parts, const ScriptContext& context, script::RunHost& host) {
  return {.state = parts.state,
          .terminal = parts.slices.terminal,
          .device = parts.slices.device,
          .exchange = parts.core.exchange,
          .pane = context.pane,
          .waits = parts.core.waits,
          .prompt = context.prompt,
          .log = parts.log,
          .host = host};
}

}  // namespace

ScriptView::ScriptView(ScriptParts parts, ScriptContext context, ScriptToolbar* toolbar, QObject* parent)
    : QObject(parent),
      context_(std::move(context)),
      core_(LinksOf(parts, context_, *this)),
      state_(parts.state),
      terminal_(parts.slices.terminal),
      device_(parts.slices.device),
      exchange_(parts.core.exchange),
      log_(parts.log),
      files_(core_.list, context_.dialogs, context_.prompt),
      toolbar_(toolbar),
      panel_(new QWidget),
      grid_(new script::CommandGrid(core_.list)),
      unsaved_(new UnsavedView(grid_, context_.unsaved, context_.prompt, panel_)) {
  auto* column = new QVBoxLayout(panel_);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(unsaved_);
  column->addWidget(grid_);
  auto* findings = new script::FindingsList(panel_);
  column->addWidget(findings);
  watch_ = new script::WatchPanel(panel_);
  column->addWidget(watch_);
  connect(watch_, &script::WatchPanel::Closed, this, [this] {
    watching_ = false;
    grid_->setFocus();
  });
  check_ = new script::ListCheck(grid_, findings, [&state = parts.state.interpreter, &log = parts.log] {
    using script::checker::LogAtStart;
    return script::checker::RunStart::Of(state, log.IsOpen() ? LogAtStart::kOpen : LogAtStart::kClosed);
  });
  ConnectButtons();
  connect(grid_, &script::CommandGrid::ListFull, this,
          [this](const std::string& message) { context_.prompt.ShowError(message); });
  // Queued, so that the source of the drag need not wait for the file.
  connect(
      grid_, &script::CommandGrid::FileDropped, this, [this](const QString& name) { OpenFile(name); },
      Qt::QueuedConnection);
  ShowRecording();
  since_events_.start();
  since_painted_.start();
}

ScriptView::~ScriptView() { delete panel_; }

std::string ScriptView::FileStatus() const { return script::texts::ListStatus(core_.list.file_name()); }

std::string ScriptView::LinesLeftOut() const { return script::texts::LinesLeftOut(core_.list.left_out()); }

int ScriptView::KeepUnsaved() {
  grid_->FinishEdit();
  return unsaved_->Keep();
}

void ScriptView::Yield() {
  const bool exchanged = std::exchange(exchanges_, exchange_.ended()) != exchange_.ended();
  if (!exchanged && since_events_.elapsed() < kEventIntervalMs) return;
  QCoreApplication::processEvents();
  ShowProgress();
  if (context_.prompt.Unattended()) core_.runner.Abort();
  since_events_.start();
}

void ScriptView::ConnectButtons() {
  using While = MessagePrompt::While;
  const auto on = [this](const char* key, std::function<void()> event, While when = While::kIdle) {
    context_.prompt.OnTrigger(toolbar_->Button(key), std::move(event), when);
  };
  on("TB_PLAY", [this] { Run(&script::Runner::Play); });
  on("TB_SINGLESTEP", [this] { Run(&script::Runner::SingleStep); });
  on(
      "TB_STOP", [this] { Stop(); }, While::kAlways);
  on(
      "TB_BREAK", [this] { core_.runner.Break(); }, While::kAlways);
  on("TB_RECORD", [this] { ToggleRecording(); });
  on("TB_NEWSCRIPT", [this] { OnFiles(&script::CommandFileMenu::New); });
  on("TB_OPENSCRIPT", [this] { OnFiles(&script::CommandFileMenu::Open); });
  on("TB_SAVESCRIPT", [this] { OnFiles(&script::CommandFileMenu::Save); });
}

void ScriptView::OnFiles(void (script::CommandFileMenu::*command)()) {
  grid_->FinishEdit();
  (files_.*command)();
}

void ScriptView::OpenFile(const QString& name) {
  grid_->FinishEdit();
  context_.prompt.Guard([this, &name] { files_.OpenFile(base::FromQt(name)); });
}

void ScriptView::RowStarts() {
  if (since_painted_.elapsed() < kFrameMs) return;
  context_.paint();
  since_painted_.start();
}

void ScriptView::Run(const std::function<void(script::Runner&)>& command) {
  grid_->FinishEdit();
  if (!core_.runner.running()) {
    since_start_.start();
    run_progress_ = {};
    since_progress_.start();
  }
  command(core_.runner);
  AfterRun();
}

// A press during a run also gets here, without any effect.
void ScriptView::AfterRun() {
  if (core_.runner.running()) return;
  grid_->ShowRunEnd(core_.runner.last_row());
  context_.progress({});
  context_.run_ended();
  ShowWatch();
  check_->CheckAgain();
}

void ScriptView::Stop() {
  core_.runner.Stop();
  ShowWatch();
}

void ScriptView::PlayFromHere() {
  watching_ = true;
  grid_->ChooseCursorRow();
  Run(&script::Runner::PlayFromHere);
}

void ScriptView::PlayToHere() {
  watching_ = true;
  const int row = grid_->currentIndex().row() + 1;
  Run([row](script::Runner& runner) { runner.PlayTo(row); });
}

void ScriptView::ShowWatch() {
  const int row = core_.runner.stopped_before();
  watching_ |= core_.list.HasBreakpoint(row);
  watch_->setVisible(watching_ && row != 0);
  if (!watch_->isVisibleTo(panel_)) return;
  watch_->Show(script::WatchItems(core_.list, state_.interpreter,
                                  {.fields = terminal_.last_answer.Fields(),
                                   .last_result = device_.last_result,
                                   .silent = terminal_.output.SilentMode,
                                   .log_open = log_.IsOpen(),
                                   .log_recording = terminal_.output.log_recording}));
  grid_->scrollTo(grid_->currentIndex());
}

// A run that ends at once shows no progress.
void ScriptView::ShowProgress() {
  if (since_progress_.elapsed() < kProgressMs) return;
  since_progress_.start();
  context_.progress(
      run_progress_.Text(core_.list, state_.interpreter, static_cast<double>(since_start_.elapsed()) / 1000));
}

void ScriptView::ToggleRecording() {
  core_.recorder.Toggle();
  ShowRecording();
}

void ScriptView::ShowRecording() {
  toolbar_->ShowRecording(core_.recorder.button().tag, core_.recorder.button().image);
}

void AddListCommands(ExtrasMenu& extras, ScriptView& script) {
  script::CommandGrid* grid = script.grid();
  extras.On("mnuCheckList", [grid, &script] {
    grid->FinishEdit();
    script.check().Start();
  });
  extras.On("mnuBreakpoint", [grid] { grid->toggleBreakpoint(); });
  extras.On("mnuPlayFromRow", [&script] { script.PlayFromHere(); });
  extras.On("mnuRunToRow", [&script] { script.PlayToHere(); });
  const auto on_rows = [&extras, grid](const char* name, void (script::CommandGrid::*edit)()) {
    extras.On(name, [grid, edit] {
      grid->FinishEdit();
      (grid->*edit)();
    });
  };
  on_rows("mnuDuplicateRow", &script::CommandGrid::duplicateRows);
  on_rows("mnuToggleComment", &script::CommandGrid::toggleComments);
  on_rows("mnuMoveUp", &script::CommandGrid::moveRowsUp);
  on_rows("mnuMoveDown", &script::CommandGrid::moveRowsDown);
}

}  // namespace kolvane::window
