#include "terminal/state_line.h"

#include <gtest/gtest.h>

namespace kolvane::terminal {
namespace {

TEST(StateLine, ShowsTheMostUrgent) {
  StateLine line;
  EXPECT_EQ(line.Text(), "");
  EXPECT_TRUE(line.Set(StateKind::kStillOpen, "left"));
  EXPECT_TRUE(line.Set(StateKind::kBytes, "bytes"));
  EXPECT_TRUE(line.Set(StateKind::kModem, "modem"));
  EXPECT_TRUE(line.Set(StateKind::kLost, "lost"));
  EXPECT_TRUE(line.Set(StateKind::kRun, "run"));
  EXPECT_TRUE(line.Set(StateKind::kWait, "wait"));
  EXPECT_EQ(line.Text(), "run: wait");
  line.Set(StateKind::kWait, "");
  EXPECT_EQ(line.Text(), "run");
  line.Set(StateKind::kRun, "");
  EXPECT_EQ(line.Text(), "lost");
}

TEST(StateLine, ShowsTheRowBeforeWhatARunWaitsFor) {
  StateLine line;
  line.Set(StateKind::kRun, "Zeile 12 von 240, Schleife 3 von 10, 0:42");
  line.Set(StateKind::kWait, "wartet auf Antwort (1,2 s, Esc bricht ab)");
  EXPECT_EQ(line.Text(), "Zeile 12 von 240: wartet auf Antwort (1,2 s, Esc bricht ab)");
  line.Set(StateKind::kRun, "");
  EXPECT_EQ(line.Text(), "wartet auf Antwort (1,2 s, Esc bricht ab)");
}

TEST(StateLine, ShowsWhatWasLeftOverBehindTheNumberOfBytesOrWhatAFailureMeans) {
  StateLine line;
  line.Set(StateKind::kWords, "-60: abgebrochen");
  EXPECT_EQ(line.Text(), "-60: abgebrochen");
  line.Set(StateKind::kStillOpen, "Noch offen: 1 Schleife");
  EXPECT_EQ(line.Text(), "-60: abgebrochen; Noch offen: 1 Schleife");
  line.Set(StateKind::kBytes, "3 Bytes warten");
  EXPECT_EQ(line.Text(), "3 Bytes warten; Noch offen: 1 Schleife");
  line.Set(StateKind::kStillOpen, "");
  EXPECT_EQ(line.Text(), "3 Bytes warten");
}

TEST(StateLine, ABlocksProgressFollowsWhatIsWaitedFor) {
  StateLine line;
  line.Set(StateKind::kBlock, "Block: 37 % von 8192 KB");
  EXPECT_EQ(line.Text(), "Block: 37 % von 8192 KB");
  line.Set(StateKind::kWait, "wartet auf Antwort (1,2 s, Esc bricht ab)");
  EXPECT_EQ(line.Text(), "wartet auf Antwort (1,2 s, Esc bricht ab), Block: 37 % von 8192 KB");
}

TEST(StateLine, ReportsOnlyWhatChangesTheText) {
  StateLine line;
  EXPECT_TRUE(line.Set(StateKind::kRun, "run"));
  EXPECT_FALSE(line.Set(StateKind::kRun, "run"));
  EXPECT_FALSE(line.Set(StateKind::kBytes, "12"));
  EXPECT_TRUE(line.Set(StateKind::kRun, ""));
  EXPECT_EQ(line.Text(), "12");
}

}  // namespace
}  // namespace kolvane::terminal
