#include "terminal/interactive_send.h"

#include <gtest/gtest.h>

namespace kolvane::terminal {
namespace {

TEST(CommandHistory, KeepsTheNewestFirst) {
  CommandHistory history;
  EXPECT_TRUE(history.Add("IDN?").inserted);
  EXPECT_TRUE(history.Add("MSV?").inserted);
  EXPECT_EQ(history.entries(), (std::deque<std::string>{"MSV?", "IDN?"}));
}

TEST(CommandHistory, KeepsARepeatedCommandOnceRegardlessOfCase) {
  CommandHistory history;
  history.Add("Größe?");
  const HistoryChange change = history.Add("GRÖßE?");
  EXPECT_FALSE(change.inserted);
  EXPECT_FALSE(change.dropped_last);
  EXPECT_EQ(history.entries(), (std::deque<std::string>{"Größe?"}));
}

TEST(CommandHistory, ComparesWithTheFirstEntryOnly) {
  CommandHistory history;
  history.Add("A");
  history.Add("B");
  EXPECT_TRUE(history.Add("A").inserted);
  EXPECT_EQ(history.entries(), (std::deque<std::string>{"A", "B", "A"}));
}

TEST(CommandHistory, HoldsTwoHundredAndFiftySix) {
  CommandHistory history;
  for (int i = 1; i <= 255; ++i) history.Add("C" + std::to_string(i));
  const HistoryChange last_kept = history.Add("C256");
  EXPECT_TRUE(last_kept.inserted);
  EXPECT_FALSE(last_kept.dropped_last);
  EXPECT_EQ(history.entries().size(), 256u);
  EXPECT_EQ(history.entries().back(), "C1");

  const HistoryChange first_dropped = history.Add("C257");
  EXPECT_TRUE(first_dropped.inserted);
  EXPECT_TRUE(first_dropped.dropped_last);
  EXPECT_EQ(history.entries().size(), 256u);
  EXPECT_EQ(history.entries().front(), "C257");
  EXPECT_EQ(history.entries().back(), "C2");

  EXPECT_FALSE(history.Add("c257").dropped_last);
  EXPECT_EQ(history.entries().back(), "C2");
}

}  // namespace
}  // namespace kolvane::terminal
