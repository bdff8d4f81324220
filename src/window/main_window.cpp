#include "window/main_window.h"

#include <QCloseEvent>
#include <QLineEdit>
#include <QScreen>
#include <utility>

#include "base/number.h"
#include "script/ui/command_grid.h"
#include "window/images.h"
#include "window/text.h"

namespace kolvane::window {
namespace {

constexpr QSize kFirstSize(1080, 720);

}  // namespace

MainWindow::MainWindow(terminal::TerminalSlices slices, const terminal::WindowSettings& settings,
                       device::PortLibrarySource& library)
    : slices_(slices),
      prompt_(this),
      area_(new WindowArea(this)),
      toolbar1_(new MainToolbar(this)),
      menus_(this),
      pane_(new terminal::OutputPane),
      core_(slices, library, {*pane_, log_, prompt_, *this}),
      box_(area_->terminal_bar()->command()),
      interactive_(core_.session, slices.terminal.options, core_.output, core_.clock, *this, box_,
                   base::SystemDecimalSign()),
      receive_(area_->terminal_bar(), slices.terminal, core_.device, prompt_, this),
      pane_commands_(menus_, pane_, this) {
  setObjectName(QStringLiteral("frmTerminal"));
  setWindowTitle(QStringLiteral("Kolvane Terminal"));
  setWindowIcon(Icon("kolvane"));
  addToolBar(Qt::TopToolBarArea, toolbar1_);
  setContextMenuPolicy(Qt::NoContextMenu);
  BuildArea();
  ApplyLook(settings.pane);
  ConnectMenus();
  ConnectSending();
  // A little less than the screen, whose whole height a frame and a panel may not leave.
  resize(kFirstSize.boundedTo(screen()->availableSize() * 0.9));
}

void MainWindow::BuildArea() {
  pane_->setObjectName(QStringLiteral("TermWin"));
  pane_->setAccessibleName(QStringLiteral("Ausgabe"));
  area_->splitter()->addWidget(pane_);
  area_->splitter()->addWidget(new script::CommandGrid(list_));
  area_->splitter()->setStretchFactor(0, 7);
  area_->splitter()->setStretchFactor(1, 3);
  area_->splitter()->setSizes({kFirstSize.width() * 7 / 10, kFirstSize.width() * 3 / 10});
  area_->status_bars().ShowLogFile("Logdatei: Keine");
  area_->status_bars().ShowCommandList("Befehlsliste: Unbenannt");
  setCentralWidget(area_);
  connect(&receive_, &ReceiveView::CountShownOrHidden, area_, &WindowArea::LayOutParts);
  area_->terminal_bar()->command()->setFocus();
}

void MainWindow::ApplyLook(const terminal::Look& look) {
  QFont font(ToQt(look.font_name), look.font_size);
  font.setBold(look.font_bold);
  font.setStyleHint(QFont::TypeWriter);
  pane_->setFont(font);
  pane_->setTextColor(ToQt(look.font_color));
  pane_->setBackgroundColor(ToQt(look.back_color));
}

void MainWindow::Load() {
  receive_.controls().Load(core_.output);
  const terminal::Options& options = slices_.terminal.options;
  menus_.Item("mnuOption_0")->setChecked(options.show_commands);
  menus_.Item("mnuOption_1")->setChecked(options.show_response_times);
  menus_.Item("mnuOption_2")->setChecked(options.line_breaks);
  ConnectionChanged();
}

void MainWindow::On(const char* item, const std::function<void()>& event) {
  connect(menus_.Item(item), &QAction::triggered, this, [this, event] { prompt_.Guard(event); });
}

void MainWindow::ConnectMenus() {
  connect(toolbar1_, &MainToolbar::ButtonClick, this, &MainWindow::Toolbar1ButtonClick);
  connect(menus_.connection, &QMenu::aboutToShow, this, &MainWindow::OpenConnectionMenu);
  On("mnuConnect", [this] { core_.connect.Connect(); });
  On("mnuDisconnect", [this] { core_.connect.Disconnect(); });
  On("mnuExit", [this] { close(); });
  for (int index = 0; index < 3; ++index) {
    On(("mnuOption_" + std::to_string(index)).c_str(),
       [this, index] { slices_.terminal.options.Toggle(index); });
  }
}

void MainWindow::ConnectSending() {
  TerminalBar* bar = area_->terminal_bar();
  connect(bar->command()->lineEdit(), &QLineEdit::returnPressed, this, &MainWindow::Send);
  connect(bar->send(), &QPushButton::clicked, this, &MainWindow::Send);
}

void MainWindow::Send() {
  const std::string command = FromQt(area_->terminal_bar()->command()->currentText());
  prompt_.Guard([&] { interactive_.Send(command); });
}

void MainWindow::Toolbar1ButtonClick(const QString& key) {
  if (key == QLatin1String("TB_CONNECT")) prompt_.Guard([this] { core_.connect.Press(); });
  if (key == QLatin1String("TB_FLUSH")) prompt_.Guard([this] { core_.connect.Flush(); });
}

void MainWindow::OpenConnectionMenu() {
  const terminal::ConnectionMenu enabled = core_.connect.Menu();
  menus_.Item("mnuConnect")->setEnabled(enabled.connect);
  menus_.Item("mnuDisconnect")->setEnabled(enabled.disconnect);
}

void MainWindow::ConnectionChanged() {
  const terminal::ConnectButtonState& button = core_.connect.button();
  toolbar1_->ShowState("TB_CONNECT", button.tag, button.image, ToQt(button.tool_tip));
  area_->status_bars().ShowConnection(core_.connect.StatusText());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  // The steps may show message boxes, during which the window could be closed once more.
  if (unload_) std::exchange(unload_, nullptr)();
  event->accept();
  Q_EMIT Closed();
}

}  // namespace kolvane::window
