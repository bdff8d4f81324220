#include "window/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QScreen>
#include <utility>

#include "base/ui/qt_text.h"
#include "device/connection_form.h"
#include "device/connection_texts.h"
#include "device/device_state.h"
#include "device/open_sequence.h"
#include "device/port_table.h"
#include "device/ui/connection_dialog.h"
#include "script/texts.h"
#include "window/icons.h"
#include "window/status_bars.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr QSize kFirstSize(1160, 740);

// The connection's description, or its kind of port, because some kinds have no description.
std::string DescriptionOrKind(const device::ConnectionParameters& connection) {
  const std::string description = ConnectionDescription(connection);
  const device::PortKind* kind = device::PortKindOfCode(connection.port_code);
  return description.empty() && kind != nullptr ? kind->caption : description;
}

}  // namespace

MainWindow::MainWindow(WindowContext context)
    : context_(std::move(context)),
      prompt_(this, context_.close),
      area_(new WindowArea(this)),
      toolbar1_(new MainToolbar(this)),
      menus_(this),
      extras_(this, prompt_),
      pane_(new pane::OutputPane),
      pane_target_(pane_, context_.settings.pane, prompt_, this),
      popup_(menus_, prompt_, pane_target_, this),
      log_(toolbar1_, menus_, area_->status_bars(), context_.slices.terminal.output, prompt_, this),
      wait_(*this, area_->status_bars(),
            [this] {
              pane_->Flush();
              script_.Flush();
            }),
      core_(context_.slices, context_.library, {*pane_, log_.control(), prompt_, *this}),
      dialogs_(this),
      lock_(*this),
      script_({context_.script, context_.slices, core_, log_.control()},
              {.prompt = prompt_,
               .pane = *pane_,
               .dialogs = dialogs_,
               .lock_gui = [this](bool locked) { Lock(locked); },
               .paint = [this] { wait_.PaintNow(); },
               .unsaved = context_.unsaved,
               .progress =
                   [this](const std::string& text) {
                     area_->status_bars().ShowState(terminal::StateKind::kRun, text);
                   },
               .run_ended = [this] { ShowStillOpen(); }},
              area_->script_bar(), this),
      reference_(*pane_, HelpFolders(), prompt_),
      grid_target_(script_.grid(), script_.files(), context_.settings.command_list, prompt_, this),
      box_(area_->terminal_bar()->command()),
      interactive_(core_.exchange, script_.recorder(), box_),
      lines_(interactive_, context_.slices.device),
      listener_(core_.device, context_.slices, core_.output, core_.connect, [this] { return IsBusy(); }),
      receive_(area_->terminal_bar(), context_.slices.terminal, core_.device, prompt_, this),
      help_(this, HelpFolders(), prompt_),
      find_in_pane_(new pane::PaneFind(pane_)),
      find_in_list_(new script::ListFind(script_.grid())),
      recent_(new RecentLists(extras_.AddMenu("mnuRecent"), context_.state,
                              [this](const QString& name) { script_.OpenFile(name); })),
      values_(core_, context_.slices.terminal.last_answer, prompt_, this) {
  setObjectName(QStringLiteral("frmTerminal"));
  setWindowIcon(Icon("kolvane"));
  addToolBar(Qt::TopToolBarArea, toolbar1_);
  setContextMenuPolicy(Qt::NoContextMenu);
  BuildArea();
  BuildScript();
  pane_target_.ShowLook();
  grid_target_.ShowLook();
  ConnectFiles();
  ConnectPane();
  ConnectConnection();
  ConnectOptions();
  ConnectExtras();
  ConnectFinding();
  ConnectSending();
  ConnectWaiting();
  // A little less than the screen, because frame and panels may take part of its height.
  resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));
  if (context_.state != nullptr) memory_ = new WindowMemory(this, area_->splitter(), *context_.state);
}

void MainWindow::BuildArea() {
  pane_->setObjectName(QStringLiteral("TermWin"));
  pane_->setAccessibleName(QStringLiteral("Ausgabe"));
  area_->splitter()->addWidget(pane_);
  area_->splitter()->addWidget(script_.panel());
  area_->splitter()->setStretchFactor(0, 6);
  area_->splitter()->setStretchFactor(1, 4);
  area_->splitter()->setSizes({kFirstSize.width() * 6 / 10, kFirstSize.width() * 4 / 10});
  setCentralWidget(area_);
  connect(&receive_, &ReceiveView::CountShownOrHidden, area_, &WindowArea::LayOutParts);
  area_->terminal_bar()->command()->setFocus();
}

void MainWindow::BuildScript() {
  const auto show_file = [this] {
    area_->status_bars().ShowCommandList(script_.FileStatus(), script_.LinesLeftOut());
    ShowCaption();
    recent_->Note(script_.grid()->list().last_file());
  };
  connect(script_.grid(), &script::CommandGrid::FileShownAgain, this, show_file);
  connect(script_.grid(), &script::CommandGrid::Touched, this,
          [this] { popup_.SetEditTarget(grid_target_); });
  connect(script_.grid(), &script::CommandGrid::popupRequested, this,
          [this](const QPoint& where) { popup_.OpenPopup(grid_target_, where); });
  show_file();
}

void MainWindow::ShowCaption() {
  const script::CommandList& list = script_.grid()->list();
  const bool connected = context_.slices.device.connected;
  setWindowTitle(Caption(list.file_name(), connected ? core_.connect.StatusText() : "", list.modified()));
  setWindowModified(list.modified());
}

void MainWindow::ShowGettingStarted() {
  const bool choosable = core_.connect.Menu().configure;
  pane_->setPlaceholderText(
      base::ToQt(texts::GettingStarted(choosable ? DescriptionOrKind(context_.slices.connection) : "")));
}

void MainWindow::Load() {
  receive_.controls().Load(core_.output);
  const terminal::Options& options = context_.slices.terminal.options;
  for (std::size_t index = 0; index < terminal::kOptionItems.size(); ++index)
    menus_.Option(index)->setChecked(options.*terminal::kOptionItems[index]);
  ConnectionChanged();
}

void MainWindow::PressConnect() { toolbar1_->Button("TB_CONNECT")->trigger(); }

void MainWindow::PressPlay() { area_->script_bar()->Button("TB_PLAY")->trigger(); }

bool MainWindow::IsBusy() const {
  return core_.waits.IsUnderWay() || core_.connect.connecting() || script_.IsRunning() || lines_.IsSending();
}

bool MainWindow::Waiting(device::Operation operation, double seconds) {
  if (script_.IsRunning()) script_.ShowProgress();
  return wait_.Waiting(operation, seconds) && MayContinue();
}

void MainWindow::ShowStillOpen() {
  const terminal::OutputFlags& output = context_.slices.terminal.output;
  const bool recording = output.log_recording && log_.control().IsOpen() && log_.control().button().tag == 0;
  area_->status_bars().ShowState(
      terminal::StateKind::kStillOpen,
      script::StillOpen(context_.script.interpreter, output.SilentMode, recording));
}

void MainWindow::ShowTimeStamps() { pane_->setTimeStamps(context_.slices.terminal.extras.time_stamps); }

// The status is at the line's end: "-30", "Write error: -41".
QString MainWindow::MeaningOf(const QString& line) {
  bool is_status = false;
  const int status = line.section(u' ', -1).toInt(&is_status);
  device::PortLibrary* library = is_status && status < 0 ? context_.library.Library() : nullptr;
  return library == nullptr ? QString() : base::ToQt(library->StatusText(status));
}

void MainWindow::Lock(bool locked) {
  if (locked) listener_.EndLine();
  lock_.LockGUI(locked);
  extras_.Lock(locked);
  area_->find_bar()->ShowReplaceable();
}

void MainWindow::BeginExchange() {
  listener_.EndLine();
  pane_->FollowEnd();
}

void MainWindow::Send() {
  if (IsWaiting()) return;
  const std::string text = base::FromQt(area_->terminal_bar()->command()->currentText());
  if (!text.empty()) BeginExchange();
  prompt_.Guard([&] { lines_.Send(text, [] { QApplication::processEvents(); }); });
}

void MainWindow::OpenConnectionMenu() {
  const terminal::ConnectionMenu enabled = core_.connect.Menu();
  menus_.Item("mnuConfigureConnection")->setEnabled(enabled.configure);
  menus_.Item("mnuConnect")->setEnabled(enabled.connect);
  menus_.Item("mnuDisconnect")->setEnabled(enabled.disconnect);
}

// ports.ini may have changed since the connection was chosen.
void MainWindow::ConnectionEnding() {
  listener_.Forget();
  const device::DeviceState& device = context_.slices.device;
  if (!device.connected && device.OperMode == device::operating_mode::kPortLibrary)
    device::TakeConfiguredRate(context_.slices.connection);
}

void MainWindow::ConnectionChanged() {
  const terminal::ConnectButtonState& button = core_.connect.button();
  toolbar1_->ShowState("TB_CONNECT", button.tag, button.image, base::ToQt(button.tool_tip));
  area_->status_bars().ShowConnection(core_.connect.StatusText());
  listener_.Renew();
  OpenConnectionMenu();
  ShowConfigureButton();
  ShowCaption();
  ShowGettingStarted();
}

// In the other modes the connection is the host's, whether it is open or not.
void MainWindow::ShowConfigureButton() {
  const device::DeviceState& device = context_.slices.device;
  const bool own = device.OperMode == device::operating_mode::kPortLibrary;
  QAction* button = toolbar1_->Button("TB_PORTCONFIGURE");
  button->setEnabled(core_.connect.Menu().configure);
  button->setToolTip(
      base::ToQt(own && device.connected ? texts::kConfigureTipConnected : texts::kConfigureTip));
}

bool MainWindow::Dialling(const device::DialProgress& progress) {
  area_->status_bars().ShowConnection(terminal::texts::Dialling(progress));
  if (device::IsRefusal(progress.reply))
    area_->status_bars().ShowState(terminal::StateKind::kModem, progress.reply);
  return wait_.Serve() && MayContinue();
}

void MainWindow::ConfigureConnection() {
  device::ConnectionDialog(
      {context_.slices.connection, context_.slices.device, context_.library, prompt_, context_.folder}, this)
      .exec();
  ShowGettingStarted();
}

// If requested during a command, closing waits until that has been given up.
void MainWindow::closeEvent(QCloseEvent* event) {
  close_when_idle_ = IsBusy();
  prompt_.Dismiss(close_when_idle_);
  if (close_when_idle_) {
    lines_.Stop();
    script_.Abort();
    return event->ignore();
  }
  KeepUnsaved();
  if (memory_ != nullptr) memory_->Note();
  listener_.Forget();
  // The steps may show message boxes, during which the window could be closed again.
  if (unload_) std::exchange(unload_, nullptr)();
  help_.Close();
  values_.Close();
  event->accept();
  Q_EMIT Closed();
}

// Reported where nobody has to answer: closing shows no message.
void MainWindow::KeepUnsaved() {
  const int error = script_.KeepUnsaved();
  if (error != 0 && context_.close != nullptr)
    context_.close->Messages().ShowError(script::texts::ListNotKept(error));
}

void MainWindow::CloseWhenIdle() {
  if (close_when_idle_ && !IsBusy()) close();
}

}  // namespace kolvane::window
