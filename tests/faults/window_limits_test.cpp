// A window that runs out of memory or descriptors, or is closed while a list runs.

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QPushButton>

#include <algorithm>
#include <utility>

#include "base/no_descriptors.h"
#include "devlnk/status.h"
#include "faults/failing_new.h"
#include "faults/live_window.h"

namespace kolvane::faults {
namespace {

constexpr char kNoMemory[] = "Nicht genügend Speicher";

void ExpectAnswersAgain(LiveWindow& live) {
  if (live.connected()) live.Press("TB_CONNECT");
  live.Press("TB_CONNECT");
  live.NewLines();
  live.Send("NOW");
  EXPECT_EQ(live.NewLines(), "NOW|NOW");
}

// More than a command or a list needs on an idle machine; the longer one takes, the more often the window is
// painted.
constexpr int kMaxAllocations = 40;

TEST(WindowLimits, Row28ACommandWithoutMemory) {
  LiveWindow live(Port::kTcp, NoFault);
  live.Send("FIRST");
  bool hit = true;
  for (int nth = 1; hit && nth <= kMaxAllocations; ++nth) {
    SCOPED_TRACE(nth);
    {
      auto* send = live.window().findChild<QPushButton*>("cmdSend");
      live.window().findChild<QComboBox*>("cmbCommand")->setCurrentText("ONE");
      const FailingNew failing(nth);
      send->click();
      hit = failing.hit();
    }
    for (const std::string& box : live.boxes()) EXPECT_EQ(box, kNoMemory);
    ExpectAnswersAgain(live);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(WindowLimits, Row28AListWithoutMemory) {
  LiveWindow live(Port::kTcp, NoFault);
  live.Play("ONE\r\n$REPEAT 1\r\nTWO\r\n$ENDREPEAT\r\n");
  bool hit = true;
  for (int nth = 1; hit && nth <= kMaxAllocations; ++nth) {
    SCOPED_TRACE(nth);
    {
      auto* play = live.window().findChild<QAction*>("TB_PLAY");
      // A run that ends inside a loop leaves it open; on a busy machine more than 16 of these runs do.
      live.interpreter().RepeatLevel = 0;
      const FailingNew failing(nth);
      play->trigger();
      hit = failing.hit();
    }
    for (const std::string& box : live.boxes()) EXPECT_EQ(box, kNoMemory);
    EXPECT_TRUE(live.window().findChild<QToolBar*>("Toolbar1")->isEnabled());
    ExpectAnswersAgain(live);
    if (testing::Test::HasFailure()) return;
  }
}

TEST(WindowLimits, Row28NoDescriptorToConnect) {
  for (const Port port : kPorts) {
    LiveWindow live(port, NoFault);
    live.Send("FIRST");
    live.Press("TB_CONNECT");
    {
      const base::NoDescriptors none;
      live.Press("TB_CONNECT");
    }
    ASSERT_EQ(live.boxes().size(), 1u);
    // USB devices are found by reading the system's record, which cannot be opened then.
    const auto status =
        port == Port::kUsbLine ? devlnk::Status::kNoSuchNode : devlnk::Status::kOutOfResources;
    const std::string code = std::to_string(devlnk::Code(status));
    EXPECT_EQ(live.boxes()[0], "Fehler beim Verbindungsaufbau: " + code + " (" + code + ")");
    ExpectAnswersAgain(live);
  }
}

TEST(WindowLimits, Row29ClosedWhileAListRuns) {
  LiveWindow live(Port::kTcp, [&live](Wire& wire) {
    QMetaObject::invokeMethod(&live.window(), &QWidget::close, Qt::QueuedConnection);
    wire.Pause(20);
    wire.Send("FAULT\r\n");
    return After::kContinue;
  });
  bool closed = false;
  QObject::connect(&live.window(), &window::MainWindow::Closed, [&closed] { closed = true; });
  live.Play("ONE\r\nFAULT\r\nTWO\r\nTHREE\r\n");
  EXPECT_TRUE(closed);
  const std::vector<std::string> lines = live.instrument().lines();
  EXPECT_EQ(std::count(lines.begin(), lines.end(), "THREE"), 0);
  EXPECT_TRUE(live.boxes().empty());
}

}  // namespace
}  // namespace kolvane::faults
