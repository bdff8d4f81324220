// What the menus and buttons of the terminal window do.
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>

#include "base/ui/buttons.h"
#include "base/ui/qt_text.h"
#include "device/device_state.h"
#include "device/ui/ports_dialog.h"
#include "help/topics.h"
#include "window/analysis_commands.h"
#include "window/field_mark.h"
#include "window/main_window.h"
#include "window/texts.h"

namespace kolvane::window {

void MainWindow::On(std::initializer_list<const char*> names, const std::function<void()>& event) {
  for (const char* name : names) prompt_.OnTrigger(findChild<QAction*>(QLatin1String(name)), event);
}

void MainWindow::ConnectFiles() {
  using Files = script::CommandFileMenu;
  On({"mnuNewCommandFile"}, [this] { script_.OnFiles(&Files::New); });
  On({"mnuOpenCommandFile"}, [this] { script_.OnFiles(&Files::Open); });
  On({"mnuSaveCommandFile"}, [this] { script_.OnFiles(&Files::Save); });
  On({"mnuSaveCommandFileAs"}, [this] { script_.OnFiles(&Files::SaveAs); });
  On({"TB_PRINTSCRIPT"}, [this] { grid_target_.Print(); });
  // Like the popup menu's items, the buttons beside the list act on what was clicked last.
  for (const auto& [button, item] :
       {std::pair{"TB_CUT", "mnuCut"}, {"TB_COPY", "mnuCopy"}, {"TB_PASTE", "mnuPaste"}})
    connect(area_->script_bar()->Button(button), &QAction::triggered, menus_.Item(item), &QAction::trigger);
  On({"mnuOpenLog", "TB_OPENLOG"}, [this] { log_.Open(); });
  On({"mnuCloseLog", "TB_CLOSELOG"}, [this] {
    log_.control().CloseLog();
    ShowStillOpen();
  });
  On({"TB_RECORDLOG"}, [this] {
    log_.control().PressRecord();
    ShowStillOpen();
  });
  On({"mnuExit"}, [this] { close(); });
}

// TB_SAVETERMWIN does nothing.
void MainWindow::ConnectPane() {
  connect(pane_, &pane::OutputPane::Touched, this, [this] { popup_.SetEditTarget(pane_target_); });
  connect(pane_, &pane::OutputPane::popupRequested, &popup_,
          [this](const QPoint& where) { popup_.OpenPopup(pane_target_, where); });
  // Queued, so that the source of the drag need not wait for the file.
  connect(
      pane_, &pane::OutputPane::fileDropped, this,
      [this](const QString& path) { prompt_.Guard([&] { pane_target_.Load(base::FromQt(path)); }); },
      Qt::QueuedConnection);
  // "Speichern" of the popup menu always means the pane; the list has its own menu.
  On({"mnuSaveTerminal", "mnuSaveAs"}, [this] { pane_target_.Save(); });
  On({"mnuOpenTextFile"}, [this] { pane_target_.Open(); });
  On({"mnuPrintTermWindow", "TB_PRINT"}, [this] { pane_target_.Print(); });
  On({"mnuBinInspect", "TB_INSPECT"}, [this] {
    InspectSelection(*pane_, inspector_, {context_.folder, context_.user_folder}, prompt_, this);
  });
  On({"mnuInsertComment"}, [this] { pane_target_.InsertComment(); });
  On({"TB_SPECIALCOMMANDS"}, [this] { reference_.Press(); });
  On({"TB_HELP"}, [this] { help_.ShowHelp(help::kStartTopic); });
}

void MainWindow::ConnectConnection() {
  connect(menus_.connection, &QMenu::aboutToShow, this, &MainWindow::OpenConnectionMenu);
  On({"mnuConfigureConnection", "TB_PORTCONFIGURE"}, [this] { ConfigureConnection(); });
  On({"mnuConnect"}, [this] { core_.connect.Connect(); });
  On({"mnuDisconnect"}, [this] { core_.connect.Disconnect(); });
  On({"TB_CONNECT"}, [this] { core_.connect.Press(); });
  On({"TB_FLUSH"}, [this] { core_.connect.Flush(); });
}

void MainWindow::ConnectOptions() {
  for (std::size_t index = 0; index < terminal::kOptionItems.size(); ++index) {
    bool& option = context_.slices.terminal.options.*terminal::kOptionItems[index];
    connect(menus_.Option(index), &QAction::toggled, this, [&option](bool checked) { option = checked; });
  }
}

void MainWindow::ConnectExtras() {
  terminal::Extras& extras = context_.slices.terminal.extras;
  const auto apply = [this] { ApplyExtras(context_.slices); };
  core_.output.SetStateView(&area_->status_bars());
  extras_.On("mnuReadAnswer", [this] {
    BeginExchange();
    core_.exchange.Read(terminal::Sender::kUser);
  });
  extras_.OnToggle("mnuListen", extras.listen);
  extras_.OnToggle("mnuQueriesOnly", extras.queries_only);
  extras_.OnToggle("mnuBlocks", extras.blocks);
  extras_.OnToggle("mnuDeviceWords", extras.device_words);
  extras_.OnToggle("mnuReconnect", extras.reconnect);
  extras_.OnToggle("mnuTimeStamps", extras.time_stamps, [this] { ShowTimeStamps(); });
  extras_.OnToggle("mnuLogTimeStamps", extras.log_time_stamps, apply);
  extras_.OnToggle("mnuUtf8", extras.utf8, [this, apply] {
    apply();
    ShowUnsendable();
  });
  extras_.On("mnuPorts", [this] {
    device::PortsDialog(
        {context_.library, prompt_, context_.slices.device.connected, device::AttachedPorts()}, this)
        .exec();
  });
  extras_.On("mnuCopyWithTimes", [this] {
    const QString text = pane_->SelectedTextWithTimes();
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
  });
  ShowTimeStamps();
  ShowStillOpen();
  pane_->SetFailureHelp([this](const QString& line) { return MeaningOf(line); });
  const bool own = context_.slices.device.OperMode == device::operating_mode::kPortLibrary;
  for (const char* name : {"mnuListen", "mnuReconnect", "mnuUtf8"}) extras_.SetAllowed(name, own);
  extras_.On("mnuValues", [this] {
    values_.Show(area_->script_bar()->RunControls());
    wait_.SetBeside(values_.window());
  });
  AddListCommands(extras_, script_);
}

void MainWindow::ConnectFinding() {
  FindBar* bar = area_->find_bar();
  extras_.On("mnuFind", [this] { OpenFindBar(); });
  const auto go = [this, bar](void (FindBar::*step)()) {
    return [this, bar, step] { bar->IsOpen() ? (bar->*step)() : OpenFindBar(); };
  };
  extras_.On("mnuFindNext", go(&FindBar::GoToNext));
  extras_.On("mnuFindPrevious", go(&FindBar::GoToPrevious));
}

// In the list if that has the focus, else in the pane; if the bar itself has it, in the same as before.
void MainWindow::OpenFindBar() {
  FindBar* bar = area_->find_bar();
  const QWidget* focus = focusWidget();
  const auto has_focus = [focus](const QWidget* widget) {
    return focus == widget || widget->isAncestorOf(focus);
  };
  const bool again = bar->IsOpen() && has_focus(bar);
  const bool list = again ? bar->target() == find_in_list_ : has_focus(script_.grid());
  if (list) script_.grid()->FinishEdit();
  if (list)
    bar->Open(find_in_list_, base::ToQt(texts::kFindInList));
  else
    bar->Open(find_in_pane_, base::ToQt(texts::kFindInPane));
}

void MainWindow::ConnectSending() {
  TerminalBar* bar = area_->terminal_bar();
  connect(bar->command()->lineEdit(), &QLineEdit::returnPressed, this, &MainWindow::Send);
  base::OnClick(bar->send(), [this] { Send(); });
  // Queued, so that an input method that inserted the text sets its own formats first.
  connect(
      bar->command()->lineEdit(), &QLineEdit::textChanged, this, [this] { ShowUnsendable(); },
      Qt::QueuedConnection);
}

void MainWindow::ShowUnsendable() {
  MarkUnsendable(area_->terminal_bar()->command()->lineEdit(), context_.slices.device.utf8);
}

void MainWindow::ConnectWaiting() {
  ScriptToolbar* bar = area_->script_bar();
  const QList<QAction*> stopping = {bar->Button("TB_STOP"), bar->Button("TB_BREAK")};
  QList<QWidget*> buttons;
  for (QAction* action : stopping) {
    buttons.append(bar->widgetForAction(action));
    connect(action, &QAction::triggered, this, [this] { wait_.GiveUp(); });
  }
  prompt_.OnTrigger(
      stopping.front(), [this] { lines_.Stop(); }, MessagePrompt::While::kAlways);
  const auto is_running = [this] { return script_.IsRunning() || lines_.IsSending(); };
  QList<QAction*> anytime = {menus_.Item("mnuCopy"), menus_.Item("mnuSelectAll"), bar->Button("TB_COPY")};
  for (const char* name : {"mnuFind", "mnuFindNext", "mnuFindPrevious"}) anytime.append(extras_.Item(name));
  wait_.SetControls({.readable = {pane_, script_.grid()},
                     .usable = {area_->find_bar()},
                     .anytime = anytime,
                     .stopping = stopping,
                     .stop_buttons = buttons,
                     .can_stop = is_running});
  prompt_.SetLinks({.is_waiting = [this] { return IsWaiting(); },
                    .is_running = [this] { return script_.IsRunning(); },
                    .stop = [this] { script_.Stop(); },
                    .before_message = [this] { wait_.WaitEnded(); },
                    .after_event =
                        [this] {
                          listener_.Look();
                          CloseWhenIdle();
                        }});
}

}  // namespace kolvane::window
