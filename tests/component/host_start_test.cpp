// How a host with a QApplication opens its terminal: on which thread, at which position, and what the
// terminal does first.

#include <QAbstractButton>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <algorithm>
#include <stdexcept>
#include <thread>

#include "base/loopback.h"
#include "base/temp_folder.h"
#include "component/host_fixture.h"
#include "component/pipe_ends.h"
#include "integration/modem.h"

namespace kolvane {
namespace {

TEST_F(HostTest, OnAThreadOtherThanTheApplicationsItIsRefused) {
  terminal_.InitTerminal(host_);
  std::string error;
  std::thread([&] {
    try {
      terminal_.OpenTerminal(1, 0);
    } catch (const std::runtime_error& thrown) {
      error = thrown.what();
    }
  }).join();
  EXPECT_EQ(error, "OpenTerminal was called on another thread than the one of the host's application object");
  EXPECT_TRUE(host_->script.calls.empty());
  Open(1, [](QMainWindow&) {});
}

TEST_F(HostTest, AMessageBeforeTheWindowIsNotTheHostsLastWindow) {
  base::WriteBytes(SettingsFile(), "[TERMINAL]\nFONTSIZE=gross\n");
  QSignalSpy last_closed(qApp, &QGuiApplication::lastWindowClosed);
  QTimer::singleShot(0, qApp, [this] {
    QTimer::singleShot(0, qApp, [] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      box->button(QMessageBox::Ok)->click();
    });
    EXPECT_THROW(terminal_.OpenTerminal(2, 0), RuntimeError);
    // The host's own exit, unless the terminal has made it exit before.
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); });
  });
  EXPECT_EQ(QApplication::exec(), 7);
  EXPECT_EQ(last_closed.count(), 0);
}

class PlacementTest : public HostTest {
 protected:
  PlacementTest() {
    host_window_.resize(100, 80);
    host_window_.show();
  }

  void ExpectOnHostWindow(QMainWindow& window) {
    EXPECT_EQ(window.windowHandle()->transientParent(), host_window_.windowHandle());
    EXPECT_TRUE(screen_.contains(window.frameGeometry()));
  }

  void ExpectCentred(QMainWindow& window) {
    const QPoint off = window.frameGeometry().center() - host_window_.frameGeometry().center();
    EXPECT_LE(off.manhattanLength(), 2) << "rounded";
  }

  QWidget host_window_;
  const QRect screen_ = host_window_.screen()->availableGeometry();
};

TEST_F(PlacementTest, IsOverTheHostsActiveWindow) {
  QWidget other;
  other.show();
  for (const QPoint center : {screen_.center(), screen_.topLeft(), screen_.bottomRight()}) {
    host_window_.move(center - QPoint(50, 40));
    host_window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host_window_));
    Open(1, [&](QMainWindow& window) {
      ExpectOnHostWindow(window);
      if (center == screen_.center()) ExpectCentred(window);
    });
  }
}

TEST_F(PlacementTest, IsOverTheHostsWindowIfNoneIsActive) {
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&host_window_));
  QApplication::setActiveWindow(nullptr);
  host_window_.move(screen_.center());
  Open(1, [this](QMainWindow& window) { ExpectOnHostWindow(window); });
}

TEST_F(PlacementTest, IsTheSystemsIfTheHostShowsNone) {
  host_window_.hide();
  Open(1, [](QMainWindow& window) { EXPECT_EQ(window.windowHandle()->transientParent(), nullptr); });
}

// Its only reference is released during its own call, as by a second InitTerminal.
class ReleasedHost final : public HostObject {
 public:
  ReleasedHost(MainClass& terminal, bool& destroyed) : terminal_(terminal), destroyed_(destroyed) {}
  ~ReleasedHost() override { destroyed_ = true; }
  void GetDeviceInfo(Variant& kind, Variant& address) override {
    kind = std::int16_t{1};
    address = std::int16_t{5};
  }
  void WriteCommand(const std::string& command) override {
    if (command.starts_with("CLOSE")) gui::ShownTerminal()->close();
    if (command.starts_with("INIT")) terminal_.InitTerminal(nullptr);
    EXPECT_FALSE(destroyed_) << command;
  }
  Variant LastError() override { return 0; }
  void SetLastError(std::int16_t) override {}

 private:
  MainClass& terminal_;
  bool& destroyed_;
};

TEST_F(HostTest, AHostReleasedInItsOwnCallLivesToItsEnd) {
  for (const char* command : {"CLOSE", "INIT"}) {
    bool destroyed = false;
    terminal_.InitTerminal(std::make_shared<ReleasedHost>(terminal_, destroyed));
    QTimer::singleShot(0, qApp, [&] {
      gui::TypeCommand(*gui::ShownTerminal(), command);
      EXPECT_TRUE(destroyed);
      if (QMainWindow* open = gui::ShownTerminal()) open->close();
    });
    terminal_.OpenTerminal(1, 0);
    EXPECT_TRUE(terminal_.CanUnload().ToBool());
  }
}

TEST_F(HostTest, OptionsThatItSetsInACallApplyToTheNextTerminal) {
  TerminalOptions next = options_;
  next.CommandList = dir_.path().toStdString() + "/next.CMD";
  base::WriteBytes(next.CommandList, "*IDN?\r\n");
  const auto first_row = [](QMainWindow& window) {
    auto* model = window.findChild<QAbstractItemView*>("CommandScript")->model();
    return model->index(0, 1).data().toString();
  };
  for (const char* call : {"GetDeviceInfo", "FlushInQ"}) {
    terminal_.SetOptions(options_);
    host_->script.on_call = {{call, [&] { terminal_.SetOptions(next); }}};
    Open(1, [&](QMainWindow& window) { EXPECT_EQ(first_row(window), "") << call; });
    Open(1, [&](QMainWindow& window) { EXPECT_EQ(first_row(window), "*IDN?") << call; });
  }
}

/// A terminal with its own connection, which connects and plays as soon as it is shown.
class StartTest : public HostTest {
 protected:
  StartTest() {
    options_.Folder = dir_.path().toStdString();
    options_.CommandList = options_.Folder + "/start.CMD";
    options_.CloseDescriptor = close_.reader();
    options_.ConnectAtStart = options_.PlayAtStart = true;
    base::WriteBytes(options_.CommandList, "*IDN?\r\n");
    setenv("XDG_DATA_HOME", options_.Folder.c_str(), 1);
  }
  ~StartTest() override {
    for (const char* name : {"XDG_DATA_HOME", "KOLVANE_COM1"}) unsetenv(name);
  }

  void DialWith(const integration::Modem& modem, const std::string& script) {
    setenv("KOLVANE_COM1", modem.node().c_str(), 1);
    base::WriteBytes(options_.Folder + "/MODEM.INI", script);
    base::WriteBytes(SettingsFile(), "[PORT]\nPORT=0\nRSTIMO=1\n[TERMINAL]\nRCVTIMO=1\n");
    terminal_.SetOptions(options_);
  }

  PipeEnds close_;
};

TEST_F(StartTest, TheListWaitsForTheModem) {
  using integration::Answers;
  integration::Modem modem(Answers{{"ATD", "RINGING\r\n\r\nCONNECT\r\n"}});
  DialWith(modem, "ATD\r\n");
  std::thread end([&] {
    modem.AwaitLines(2);
    close_.Request();
  });
  terminal_.OpenTerminal(2, 0);
  end.join();
  EXPECT_EQ(modem.AwaitLines(2), (std::vector<std::string>{"ATD", "*IDN?"})) << "dialled once";
}

// How many message boxes are shown above the window.
int ShownBoxes() {
  const QWidgetList windows = QApplication::topLevelWidgets();
  return static_cast<int>(std::count_if(windows.begin(), windows.end(), [](const QWidget* window) {
    return window->isVisible() && qobject_cast<const QMessageBox*>(window) != nullptr;
  }));
}

TEST_F(StartTest, TheListWaitsForTheMessageOfARefusedConnection) {
  base::WriteBytes(SettingsFile(), "[PORT]\nPORT=8\nIPADDRESS=127.0.0.1\nIPPORT=1\n");
  terminal_.SetOptions(options_);
  int boxes = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, qApp, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    EXPECT_EQ(ShownBoxes(), 1);
    // One about the connection, one about the list's row.
    if (++boxes == 2) close_.Request();
    box->accept();
  });
  timer.start(0);
  terminal_.OpenTerminal(2, 0);
  EXPECT_EQ(boxes, 2);
}

TEST_F(StartTest, ACloseRequestEndsTheDialling) {
  using integration::Answers;
  integration::Modem modem(Answers{{"AT1", "OK\r\n"}, {"AT2", "CONNECT\r\n"}});
  DialWith(modem, "AT1\r\nAT2\r\n");
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, qApp, [&] {
    const QMainWindow* window = gui::ShownTerminal();
    const QString status = window == nullptr ? "" : window->findChild<QLabel*>("StatusBar1_1")->text();
    if (!status.startsWith("Modem wählt")) return;
    timer.stop();
    close_.Request();
  });
  timer.start(0);
  terminal_.OpenTerminal(2, 0);
  // What the modem sends after the line is closed returns to it as an echo.
  const std::vector<std::string> lines = modem.AwaitLines(1);
  EXPECT_EQ(lines.front(), "AT1");
  EXPECT_FALSE(std::ranges::count(lines, "AT2") > 0) << "dialling continued";
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
}

}  // namespace
}  // namespace kolvane
