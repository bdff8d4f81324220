// What a device object does for the window while it waits.

#include <poll.h>

#include <QAbstractScrollArea>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <stdexcept>

#include "component/host_fixture.h"
#include "component/pipe_ends.h"

namespace kolvane {
namespace {

/// A device that never answers; it asks every millisecond whether to wait longer.
class HostWaitTest : public HostTest {
 protected:
  void AwaitNothing() {
    while (terminal_.Wait()) poll(nullptr, 0, 1);
    throw std::runtime_error("given up");
  }
  static void Send(QMainWindow& window, const QString& command) {
    window.findChild<QComboBox*>("cmbCommand")->lineEdit()->setText(command);
    window.findChild<QPushButton*>("cmdSend")->click();
  }
};

TEST_F(HostWaitTest, EscEndsTheWait) {
  for (const std::int16_t mode : {std::int16_t{0}, std::int16_t{1}}) {
    int served = 0;
    host_->script.read = [&](Variant&, Variant&) {
      QTimer::singleShot(0, qApp, [&] {
        ++served;
        EXPECT_TRUE(gui::ShownTerminal()->property("busy").toBool());
        Send(*gui::ShownTerminal(), "NEVER");
        QTest::keyClick(gui::ShownTerminal(), Qt::Key_Escape);
      });
      AwaitNothing();
    };
    Open(mode, [&](QMainWindow& window) {
      if (mode == 0) window.findChild<QAction*>("TB_CONNECT")->trigger();
      Send(window, "*IDN?");
      EXPECT_EQ(served, 1);
      const QString text = PaneText(window);
      EXPECT_TRUE(text.endsWith("*IDN?\ngiven up")) << text.toStdString();
      EXPECT_FALSE(text.contains("NEVER")) << text.toStdString();
      EXPECT_FALSE(window.property("busy").toBool());
    });
  }
}

TEST_F(HostWaitTest, ARequestToCloseEndsTheWait) {
  const PipeEnds close;
  options_.CloseDescriptor = close.reader();
  terminal_.SetOptions(options_);
  host_->script.read = [&](Variant&, Variant&) {
    close.Request();
    AwaitNothing();
  };
  terminal_.InitTerminal(host_);
  QTimer::singleShot(0, qApp, [&] { PlayList(*gui::ShownTerminal(), {"ONE", "NEVER"}); });
  terminal_.OpenTerminal(1, 0);
  EXPECT_EQ(std::ranges::count_if(host_->script.calls,
                                  [](const std::string& call) { return call.starts_with("WriteCommand"); }),
            1);
  EXPECT_TRUE(terminal_.CanUnload().ToBool());
}

TEST_F(HostWaitTest, EscEndsTheWaitOfAFlush) {
  for (const std::int16_t mode : {std::int16_t{0}, std::int16_t{1}}) {
    bool served = false;
    Open(mode, [&](QMainWindow& window) {
      host_->script.on_call[mode == 0 ? "IO.FlushInQ" : "FlushInQ"] = [&] {
        QTimer::singleShot(0, qApp, [&] {
          served = true;
          EXPECT_TRUE(window.property("busy").toBool());
          QTest::keyClick(&window, Qt::Key_Escape);
        });
        for (int i = 0; i < 1000 && terminal_.Wait(); ++i) poll(nullptr, 0, 1);
      };
      window.findChild<QAction*>("TB_FLUSH")->trigger();
      EXPECT_TRUE(served);
      EXPECT_FALSE(window.property("busy").toBool());
    });
    host_->script.on_call.clear();
  }
}

TEST_F(HostWaitTest, ACallThatServesEventsItselfIsNotFollowedByAnother) {
  bool served = false;
  host_->script.read = [&](Variant& answer, Variant&) {
    QTimer::singleShot(0, qApp, [&] {
      served = true;
      QMainWindow& window = *gui::ShownTerminal();
      Send(window, "NEVER");
      for (const char* action : {"mnuReadAnswer", "TB_CONNECT", "TB_FLUSH", "TB_PLAY", "TB_RECORD"})
        window.findChild<QAction*>(action)->trigger();
      EXPECT_FALSE(window.findChild<QAction*>("TB_RECORD")->isChecked());
    });
    while (!served) QApplication::processEvents();
    answer = "1\r\n";
  };
  Open(1, [&](QMainWindow& window) {
    host_->script.calls.clear();
    Send(window, "*IDN?");
    const QString text = PaneText(window);
    EXPECT_TRUE(text.endsWith("*IDN?\n1")) << text.toStdString();
    EXPECT_EQ(host_->script.calls,
              (std::vector<std::string>{"SetLastError(0)", "WriteCommand(\"*IDN?\n\")", "LastError()",
                                        "LastErrorDescription()", "SetLastError(0)",
                                        "Read(0, 10, 16000, 16000 spaces, 0 bytes)", "LastError()",
                                        "LastErrorDescription()"}));
  });
  EXPECT_TRUE(served);
}

TEST_F(HostWaitTest, OutsideACallOfTheDevicesItIsOver) {
  EXPECT_TRUE(terminal_.Wait());
  Open(1, [&](QMainWindow&) { EXPECT_TRUE(terminal_.Wait()); });
}

/// Counts the paint events of a widget.
class Paints final : public QObject {
 public:
  explicit Paints(QWidget* widget) : QObject(widget) { widget->installEventFilter(this); }
  int count = 0;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) ++count;
    return false;
  }
};

TEST_F(HostWaitTest, LinesArePaintedBeforeEachCall) {
  Paints* paints = nullptr;
  std::vector<int> painted;
  host_->script.read = [&](Variant& answer, Variant&) {
    if (paints != nullptr) painted.push_back(paints->count);
    answer = "1\r\n";
  };
  Open(1, [&](QMainWindow& window) {
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    paints = new Paints(window.findChild<QAbstractScrollArea*>("TermWin")->viewport());
    Send(window, "A");
    Send(window, "B");
    Send(window, "C");
    paints = nullptr;
  });
  ASSERT_EQ(painted.size(), 3u);
  EXPECT_GE(painted[0], 0);
  EXPECT_GT(painted[1], painted[0]);
  EXPECT_GT(painted[2], painted[1]);
}

}  // namespace
}  // namespace kolvane
