#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "script/checker/check_replay.h"
#include "script/checker/random_list.h"

namespace kolvane::script::checker {
namespace {

constexpr int kBudget = 1500;  // rows of a run
constexpr unsigned kShards = 10;

/// Lists of one shard; KOLVANE_RANDOM_LISTS=10000 plays ten thousand in all.
unsigned ListsPerShard() {
  const char* count = std::getenv("KOLVANE_RANDOM_LISTS");
  return count == nullptr ? 200 : (static_cast<unsigned>(std::stoul(count)) + kShards - 1) / kShards;
}

std::string Text(const std::vector<std::string>& rows) {
  std::string text;
  for (std::size_t at = 0; at < rows.size(); ++at) text += std::to_string(at + 1) + "\t" + rows[at] + "\n";
  return text;
}

class RandomLists : public testing::TestWithParam<unsigned> {};

// Each list runs three times, each run with what the one before left open.
TEST_P(RandomLists, AreRefusedInTheRowsThatTheCheckerReports) {
  CheckReplay replay;
  const unsigned lists = ListsPerShard();
  for (unsigned list = 0; list < lists; ++list) {
    const unsigned seed = GetParam() * 1000000 + list;
    RandomList random(seed);
    const std::vector<std::string> rows = random.Make();
    replay.Reset();
    replay.SetAnswers(random.Answers());
    replay.SetLogOpen(random.Coin());
    if (GetParam() % 2 != 0) replay.SetState(random.State());
    for (int run = 1; run <= 3; ++run)
      ASSERT_EQ(replay.Compare(rows, random.Coin(), kBudget), "")
          << "seed " << seed << ", run " << run << "\n"
          << Text(rows);
  }
  EXPECT_GT(replay.rows_played(), static_cast<int>(lists));
  EXPECT_GT(replay.refused(), static_cast<int>(lists) / 2);
  EXPECT_GT(replay.errors_reached(), static_cast<int>(lists) / 4);
}

// The count of open conditions is a 16-bit number: it overflows above 32767 and below -32768.
TEST(CheckReplay, CountersOfConditionsOverflowInTheRowsThatTheCheckerReports) {
  using Rows = std::vector<std::string>;
  constexpr int kManyRows = 300000;
  for (const Rows& rows : {Rows{"'a:", "$IFERR", "$GOTO 'a"}, Rows{"'a:", "$IFERR", "$GOTO 'a", "$ENDIF"},
                           Rows{"'a:", "$ENDIF", "$GOTO 'a"}, Rows{"$REPEAT 40000", "$ENDIF", "$ENDREPEAT"},
                           Rows{"$REPEAT 40000", "$IFERR", "$ENDREPEAT", "$ENDIF"},
                           Rows{"'a:", "$IFERR", "$ENDIF", "$ENDIF", "$GOTO 'a"}}) {
    CheckReplay replay;
    replay.SetAnswers({"?"});
    // $IFERR holds: the last answer starts with "?".
    EXPECT_EQ(replay.Compare({"X?"}, true, kManyRows), "");
    EXPECT_EQ(replay.Compare(rows, true, kManyRows), "") << Text(rows);
    EXPECT_EQ(replay.refused(), 1) << Text(rows);
  }
}

INSTANTIATE_TEST_SUITE_P(Shards, RandomLists, testing::Range(0u, kShards));

}  // namespace
}  // namespace kolvane::script::checker
