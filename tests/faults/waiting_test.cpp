// What the user can and cannot do with a window while it waits for the instrument.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTimer>
#include <QToolBar>
#include <QUrl>
#include <QtTest/QTest>
#include <utility>

#include "devlnk/status.h"
#include "faults/live_window.h"
#include "pane/ui/output_pane.h"
#include "script/ui/command_grid.h"

namespace kolvane::faults {
namespace {

const std::string kGivenUp = TextOf(devlnk::Status::kGivenUp);

After SendNothing(Wire& wire) {
  wire.AwaitEndOfFault();
  return After::kContinue;
}

class Waiting : public LiveWindowTest {
 protected:
  /// Runs `step` the first time that the window serves events while the instrument is silent.
  void OnFirstWait(std::function<void()> step) {
    WhileWaiting([this, step = std::move(step)] {
      if (live_->instrument().lines().back() != "FAULT") return false;
      step();
      return true;
    });
  }
  /// Runs `step` repeatedly until it returns true.
  void WhileWaiting(std::function<bool()> step) {
    timer_ = std::make_unique<QTimer>();
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this, step = std::move(step)] {
      if (!timer_->isActive()) return;
      timer_->stop();
      if (!step()) timer_->start();
    });
    timer_->start(10);
  }

  void Escape() { QTest::keyClick(live_->window().focusWidget(), Qt::Key_Escape); }
  template <typename Widget>
  Widget* Find(const char* name) {
    return live_->window().findChild<Widget*>(QLatin1String(name));
  }
  QString State() { return Find<QLabel>("StatusBar1_2")->text(); }

  /// The connection can be used as before.
  void ExpectUsable() {
    live_->instrument().EndFault();
    live_->Send("NOW");
    EXPECT_EQ(live_->NewLines(), "NOW|NOW");
    EXPECT_TRUE(live_->boxes().empty());
    EXPECT_FALSE(live_->window().property("busy").toBool());
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(State(), "");
  }

  std::unique_ptr<QTimer> timer_;
};

using WaitingOnTcp = Waiting;
INSTANTIATE_TEST_SUITE_P(Ports, Waiting, testing::ValuesIn(kPorts), PortName);
INSTANTIATE_TEST_SUITE_P(Ports, WaitingOnTcp, testing::Values(Port::kTcp), PortName);

TEST_P(Waiting, EscGivesUpAnAnswer) {
  LiveWindow& live = Open(SendNothing);
  OnFirstWait([&] {
    EXPECT_TRUE(live.window().property("busy").toBool());
    Escape();
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kGivenUp);
  ExpectUsable();
}

TEST_P(Waiting, ReceivedBytesAreKeptForTheNextRead) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("begin");
    wire.AwaitEndOfFault();
    wire.Send(" and end\r\n");
    return After::kContinue;
  });
  OnFirstWait([&] { Escape(); });
  live.Send("FAULT");
  live.instrument().EndFault();
  live.Send("NEXT");
  live.Send("LAST");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kGivenUp + "|NEXT|begin and end|LAST|NEXT");
}

TEST_P(Waiting, EscGivesUpACommandThatNobodyReads) {
  LiveWindow& live = Open(SendNothing);
  WhileWaiting([&] { return live.window().property("busy").toBool() && (Escape(), true); });
  EXPECT_EQ(live.window().core().session.SendCommand(std::string(std::size_t{16} << 20, 'x')),
            terminal::Sent::kWriteFailed);
  EXPECT_EQ(live.NewLines(), "Write error: " + kGivenUp);
}

TEST_P(Waiting, EscGivesUpABlockAndDiscardsReceivedBytes) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Send("#3100" + std::string(50, 'x'));
    wire.AwaitEndOfFault();
    return After::kContinue;
  });
  live.terminal().extras.blocks = true;
  OnFirstWait([&] { Escape(); });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kGivenUp);
  live.terminal().extras.blocks = false;
  ExpectUsable();
}

// Each byte arrives before the library would call the window.
TEST_P(Waiting, OfAnAnswerThatDripsReceivedBytesAreShown) {
  LiveWindow& live = Open([](Wire& wire) {
    wire.Drip(std::string(100'000, 'x'), 10);
    return After::kContinue;
  });
  live.terminal().receive.mode = terminal::receive_mode::kAuto;
  OnFirstWait([&] { Escape(); });
  live.Send("FAULT");
  const std::string lines = live.NewLines();
  EXPECT_TRUE(lines.starts_with("FAULT|xx")) << lines;
  EXPECT_LT(lines.size(), 8192u);
}

TEST_P(Waiting, KeysAndClicksAreDroppedNotQueued) {
  LiveWindow& live = Open(SendNothing);
  OnFirstWait([&] {
    auto* command = Find<QComboBox>("cmbCommand");
    for (int press = 0; press < 3; ++press) QTest::keyClick(command->lineEdit(), Qt::Key_Return);
    QTest::keyClicks(command->lineEdit(), QStringLiteral("TYPED"));
    QTest::mouseClick(Find<QPushButton>("cmdSend"), Qt::LeftButton);
    auto* mode = Find<QComboBox>("cmbReceiveMode");
    QTest::mouseClick(mode, Qt::LeftButton);
    EXPECT_FALSE(mode->view()->isVisible());
    QTest::keyClick(&live.window(), Qt::Key_F5);
    // As a screen reader presses them.
    Find<QPushButton>("cmdSend")->click();
    for (const char* key :
         {"TB_CONNECT", "TB_FLUSH", "TB_PLAY", "TB_SINGLESTEP", "mnuDisconnect", "mnuConnect",
          "mnuReadAnswer", "mnuPlayFromRow", "mnuRunToRow", "mnuPorts", "mnuOpenCommandFile"})
      live.Press(key);
    QMimeData list;
    list.setUrls({QUrl::fromLocalFile("/nonexistent.CMD")});
    QDragEnterEvent drag({}, Qt::CopyAction, &list, Qt::LeftButton, {});
    QApplication::sendEvent(Find<script::CommandGrid>("CommandScript")->viewport(), &drag);
    EXPECT_FALSE(drag.isAccepted());
    EXPECT_EQ(command->currentText(), "FAULT");
    Escape();
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kGivenUp);
  ExpectUsable();
  EXPECT_EQ(live.instrument().lines(), (std::vector<std::string>{"FIRST", "FAULT", "NOW"}));
}

TEST_P(WaitingOnTcp, TheStateShowsTheReasonOfTheWait) {
  Open(SendNothing);
  QString state;
  WhileWaiting([&] {
    state = State();
    if (state.isEmpty()) return false;
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    Escape();
    return true;
  });
  live_->Send("FAULT");
  EXPECT_TRUE(state.startsWith("wartet auf Antwort (0,")) << state.toStdString();
  EXPECT_TRUE(state.endsWith(" s, Esc bricht ab)")) << state.toStdString();
  live_->NewLines();
  ExpectUsable();
}

TEST_P(WaitingOnTcp, TextCanBeSelectedCopiedAndScrolled) {
  LiveWindow& live = Open(SendNothing);
  auto* pane = Find<pane::OutputPane>("TermWin");
  OnFirstWait([&] {
    QTest::mouseDClick(pane->viewport(), Qt::LeftButton, {},
                       pane->CharacterRect(pane->plainText().size() - 1).center());
    EXPECT_EQ(pane->selectedText(), "FAULT");
    QTest::keyClick(pane, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "FAULT");
    const QString text = pane->plainText();
    for (const int key : {Qt::Key_Delete, Qt::Key_Return, Qt::Key_X})
      QTest::keyClick(pane, static_cast<Qt::Key>(key));
    EXPECT_EQ(pane->plainText(), text);
    Escape();
  });
  live.Send("FAULT");
  live.NewLines();
  ExpectUsable();
}

TEST_P(WaitingOnTcp, TextCanBeSearchedAndZoomed) {
  LiveWindow& live = Open(SendNothing);
  live.window().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&live.window()));
  auto* pane = Find<pane::OutputPane>("TermWin");
  auto* text = Find<QLineEdit>("FindText");
  const std::pair<std::function<void()>, const char*> steps[] = {
      {[&] { QTest::keyClick(&live.window(), Qt::Key_F, Qt::ControlModifier); }, ""},
      {[&] { QTest::keyClicks(text, QStringLiteral("f")); }, "1 von 3"},
      {[&] { QTest::keyClick(&live.window(), Qt::Key_F3); }, "2 von 3"},
      {[&] { QTest::keyClick(text, Qt::Key_Return, Qt::ShiftModifier); }, "1 von 3"},
      {[&] { QTest::mouseClick(Find<QPushButton>("FindNext"), Qt::LeftButton); }, "2 von 3"}};
  std::size_t done = 0;
  WhileWaiting([&] {
    if (live.instrument().lines().back() != "FAULT") return false;
    if (done > 0 && Find<QLabel>("FindCount")->text() != steps[done - 1].second) return false;
    if (done < std::size(steps)) {
      steps[done++].first();
      return false;
    }
    EXPECT_EQ(pane->selectedText(), "F");
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_FALSE(Find<QWidget>("FindBar")->isVisible());
    EXPECT_TRUE(live.window().property("busy").toBool()) << "Esc has only closed the bar";
    QTest::keyClick(pane, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(pane->zoom(), 1);
    Escape();
    return true;
  });
  live.Send("FAULT");
  EXPECT_EQ(live.NewLines(), "FAULT|" + kGivenUp);
  ExpectUsable();
}

TEST_P(WaitingOnTcp, ClosingGivesUpAndDoesTheLastSteps) {
  LiveWindow& live = Open(SendNothing);
  bool unloaded = false;
  live.window().OnUnload([&] { unloaded = true; });
  const QSignalSpy closed(&live.window(), &window::MainWindow::Closed);
  OnFirstWait([&] {
    live.window().close();
    EXPECT_FALSE(unloaded);
  });
  live.Send("FAULT");
  EXPECT_TRUE(unloaded);
  EXPECT_EQ(closed.count(), 1);
  EXPECT_FALSE(live.window().isVisible());
  EXPECT_TRUE(live.boxes().empty());
}

TEST_P(WaitingOnTcp, StopGivesUpTheCurrentRowAndEndsTheRun) {
  for (const char* key : {"TB_STOP", "TB_BREAK"}) {
    SCOPED_TRACE(key);
    LiveWindow& live = Open(SendNothing);
    OnFirstWait([&] { live.Press(key); });
    live.Play("ONE\r\nFAULT\r\nNEVER\r\n");
    EXPECT_EQ(live.NewLines(), "ONE|ONE|FAULT|" + kGivenUp);
    ExpectUsable();
    live_.reset();
  }
}

TEST_P(WaitingOnTcp, ARunIsStoppedByKeysAndByTheButtonItself) {
  const std::function<void()> stops[] = {
      [&] { QTest::keyClick(&live_->window(), Qt::Key_F5, Qt::ShiftModifier); },
      [&] { QTest::keyClick(&live_->window(), Qt::Key_F6); },
      [&] {
        auto* bar = live_->window().findChild<QToolBar*>("Toolbar3");
        QTest::mouseClick(bar->widgetForAction(Find<QAction>("TB_STOP")), Qt::LeftButton);
      }};
  for (const auto& stop : stops) {
    LiveWindow& live = Open(SendNothing);
    live.window().activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&live.window()));
    OnFirstWait(stop);
    live.Play("FAULT\r\nNEVER\r\n");
    EXPECT_EQ(live.NewLines(), "FAULT|" + kGivenUp);
    ExpectUsable();
    live_.reset();
  }
}

TEST_P(WaitingOnTcp, EscGivesUpARowAndTheRunContinues) {
  LiveWindow& live = Open(SendNothing);
  OnFirstWait([&] {
    EXPECT_EQ(Find<script::CommandGrid>("CommandScript")->list().current_row(), 2);
    Escape();
    live.instrument().EndFault();
  });
  live.Play("ONE\r\nFAULT\r\nTHREE\r\n");
  EXPECT_EQ(live.NewLines(), "ONE|ONE|FAULT|" + kGivenUp + "|THREE|THREE");
}

TEST_P(WaitingOnTcp, EscGivesUpADelay) {
  LiveWindow& live = Open(SendNothing);
  QString state;
  WhileWaiting([&] {
    state = State();
    if (!state.contains("Pause")) return false;
    Escape();
    return true;
  });
  live.Play("$DELAY 600000\r\nTWO\r\n");
  EXPECT_TRUE(state.startsWith("Zeile 1 von 2: Pause (0,")) << state.toStdString();
  EXPECT_EQ(live.NewLines(), "TWO|TWO");
  ExpectUsable();
}

TEST_P(WaitingOnTcp, BreakEndsADelayAndTheRun) {
  LiveWindow& live = Open(SendNothing);
  WhileWaiting([&] { return live.window().property("busy").toBool() && (live.Press("TB_BREAK"), true); });
  live.Play("$DELAY 600000\r\nNEVER\r\n");
  EXPECT_EQ(live.NewLines(), "");
  ExpectUsable();
}

TEST_P(WaitingOnTcp, OpenLoopsOfAStoppedRunAreShown) {
  LiveWindow& live = Open(SendNothing);
  OnFirstWait([&] { live.Press("TB_BREAK"); });
  live.Play("$SILENT ON\r\n$REPEAT 3\r\nFAULT\r\n$ENDREPEAT\r\n");
  EXPECT_EQ(State(), "-60: abgebrochen; Noch offen: 1 Schleife, $SILENT ON");
  live.instrument().EndFault();
  live.Play("$SILENT OFF\r\nNOW\r\n");
  EXPECT_EQ(State(), "Noch offen: 1 Schleife");
}

// The mark follows each row that takes longer than a frame, before its answer has arrived.
TEST_P(WaitingOnTcp, TheMarkIsOnTheCurrentRow) {
  LiveWindow& live = Open(SendNothing);
  auto* grid = Find<script::CommandGrid>("CommandScript");
  OnFirstWait([&] {
    EXPECT_EQ(grid->currentIndex().row(), 2);
    Escape();
    live.instrument().EndFault();
  });
  live.Play("ONE\r\nTWO\r\nFAULT\r\nFOUR\r\n");
}

TEST_P(WaitingOnTcp, EscGivesUpAConnection) {
  LiveWindow& live = Open(SendNothing);
  live.Press("TB_CONNECT");
  live.NewLines();
  const base::FullListener full;
  live.connection().ip_port = static_cast<std::int16_t>(full.port());
  QString state;
  WhileWaiting([&] {
    state = State();
    if (state.isEmpty()) return false;
    Escape();
    return true;
  });
  live.Press("TB_CONNECT");
  EXPECT_TRUE(state.startsWith("verbindet (0,")) << state.toStdString();
  EXPECT_EQ(live.boxes(),
            std::vector<std::string>{"Fehler beim Verbindungsaufbau: " + kGivenUp + " (" + kGivenUp + ")"});
  EXPECT_FALSE(live.connected());
}

}  // namespace
}  // namespace kolvane::faults
