// Terminals that end although nobody closes their window.

#include <QDialog>
#include <QMessageBox>
#include <stdexcept>

#include "base/temp_folder.h"
#include "component/host_fixture.h"
#include "component/pipe_ends.h"
#include "gui/box_answers.h"

namespace kolvane {
namespace {

/// Terminals whose user has left a log open and the device disconnected.
class CloseTest : public HostTest {
 protected:
  // Opens a log and disconnects the device.
  void KeepOpen(QMainWindow& window) {
    PlayList(window, {"$OPENLOG " + log_, "$AUTOLOG ON", "*IDN?"});
    auto* disconnect = window.findChild<QAction*>("mnuDisconnect");
    disconnect->setEnabled(true);
    disconnect->trigger();
    host_->script.calls.clear();
  }

  void ExpectUnloaded() {
    EXPECT_EQ(Count("OpenDevice()"), 1) << "returned open";
    EXPECT_EQ(host_.use_count(), 1);
    EXPECT_TRUE(terminal_.CanUnload().ToBool());
    EXPECT_TRUE(base::ReadBytes(SettingsFile()).find("\nPORT=8\n") != std::string::npos);
    EXPECT_NE(base::ReadBytes(log_).find("*IDN?\r\n"), std::string::npos);
  }

  const std::string log_ = dir_.path().toStdString() + "/a.LOG";
};

TEST_F(CloseTest, AHostThatEndsItsEventLoopsGetsEveryLastStep) {
  terminal_.InitTerminal(host_);
  QTimer::singleShot(0, qApp, [this] {
    QTimer::singleShot(0, qApp, [this] {
      KeepOpen(*gui::ShownTerminal());
      QCoreApplication::exit(5);
    });
    terminal_.OpenTerminal(1, 0);
    EXPECT_EQ(gui::ShownTerminal(), nullptr);
    ExpectUnloaded();
  });
  EXPECT_EQ(QApplication::exec(), 5);
  Open(1, [](QMainWindow&) {});
}

TEST_F(CloseTest, AHostThatEndsItsEventLoopsEndsAListThatWouldRunForEver) {
  host_->script.read = [](Variant& answer, Variant&) { answer = "1\r\n"; };
  host_->script.on_call["WriteCommand"] = [] { QCoreApplication::exit(0); };
  terminal_.InitTerminal(host_);
  QTimer::singleShot(0, qApp, [this] {
    QTimer::singleShot(0, qApp, [] { PlayList(*gui::ShownTerminal(), {"again:", "MSV?", "$GOTO again"}); });
    terminal_.OpenTerminal(1, 0);
    EXPECT_TRUE(terminal_.CanUnload().ToBool());
  });
  EXPECT_EQ(QApplication::exec(), 0);
}

TEST_F(CloseTest, AfterARequestFailuresGoToStandardError) {
  const PipeEnds close;
  options_.CloseDescriptor = close.reader();
  terminal_.SetOptions(options_);
  terminal_.InitTerminal(host_);
  gui::BoxAnswers boxes;
  QTimer::singleShot(0, qApp, [&] {
    KeepOpen(*gui::ShownTerminal());
    host_->script.on_call["OpenDevice"] = [] { throw std::runtime_error("Gerät aus"); };
    boxes.Start();
    close.Request();
  });
  testing::internal::CaptureStderr();
  terminal_.OpenTerminal(1, 0);
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(err.ends_with("kolvane: Fehler beim Verbindungsaufbau: Gerät aus (-901)\n")) << err;
  EXPECT_EQ(boxes.texts(), QStringList{});
  ExpectUnloaded();
}

TEST_F(CloseTest, AfterAHostHasEndedItsEventLoopsFailuresGoToStandardError) {
  terminal_.InitTerminal(host_);
  gui::BoxAnswers boxes;
  std::string err;
  QTimer::singleShot(0, qApp, [&] {
    QTimer::singleShot(0, qApp, [&] {
      KeepOpen(*gui::ShownTerminal());
      host_->script.on_call["OpenDevice"] = [] { throw std::runtime_error("Gerät aus"); };
      boxes.Start();
      QCoreApplication::exit(0);
    });
    testing::internal::CaptureStderr();
    terminal_.OpenTerminal(1, 0);
    err = testing::internal::GetCapturedStderr();
  });
  QApplication::exec();
  EXPECT_TRUE(err.ends_with("kolvane: Fehler beim Verbindungsaufbau: Gerät aus (-901)\n")) << err;
  EXPECT_EQ(boxes.texts(), QStringList{});
  ExpectUnloaded();
}

TEST_F(CloseTest, AUserWhoClosesTheWindowIsShownTheFailure) {
  gui::BoxAnswers boxes;
  Open(1, [&](QMainWindow& window) {
    KeepOpen(window);
    host_->script.on_call["OpenDevice"] = [] { throw std::runtime_error("Gerät aus"); };
    boxes.Start();
  });
  EXPECT_EQ(boxes.texts(), QStringList{"Fehler beim Verbindungsaufbau: Gerät aus (-901)"});
  ExpectUnloaded();
}

// The request came before there was a window to close.
TEST_F(CloseTest, AnEarlierRequestKeepsAMessageFromBeingShown) {
  const PipeEnds close;
  close.Request();
  options_.CloseDescriptor = close.reader();
  terminal_.SetOptions(options_);
  base::WriteBytes(SettingsFile(), "[TERMINAL]\nFONTSIZE=gross\n");
  gui::BoxAnswers boxes;
  boxes.Start();
  EXPECT_THROW(terminal_.OpenTerminal(2, 0), RuntimeError);
  EXPECT_EQ(boxes.texts(), QStringList{});
}

TEST_F(CloseTest, AHostThatRunsNoEventLoopMayEndThemAndOpenAgain) {
  host_->script.on_call["WriteCommand"] = [] { QCoreApplication::exit(0); };
  Open(1, [](QMainWindow& window) { PlayList(window, {"*IDN?"}); });
  host_->script.on_call.clear();
  Open(1, [](QMainWindow&) {});
}

TEST_F(CloseTest, ARequestLeavesTheHostsDialogBelowOpen) {
  const PipeEnds close;
  options_.CloseDescriptor = close.reader();
  terminal_.SetOptions(options_);
  base::WriteBytes(SettingsFile(), "[TERMINAL]\nFONTSIZE=gross\n");
  QDialog dialog;
  dialog.setModal(true);
  dialog.show();
  QTimer::singleShot(0, qApp, [&] {
    EXPECT_NE(qobject_cast<QMessageBox*>(QApplication::activeModalWidget()), nullptr);
    close.Request();
  });
  EXPECT_THROW(terminal_.OpenTerminal(2, 0), RuntimeError);
  EXPECT_TRUE(dialog.isVisible());
}

}  // namespace
}  // namespace kolvane
