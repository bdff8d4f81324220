#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "base/encoding.h"
#include "base/number.h"
#include "base/text.h"
#include "help_files.h"

namespace kolvane::help {
namespace {

class DemoList : public testing::Test {
 protected:
  DemoList() {
    std::size_t start = 0;
    for (std::size_t end = bytes_.find("\r\n"); end != std::string::npos; end = bytes_.find("\r\n", start)) {
      rows_.push_back(base::FromWindows1252(bytes_.substr(start, end - start)));
      start = end + 2;
    }
  }

  auto Count(std::string_view command) const { return std::ranges::count(rows_, command, FirstWord); }

  static double ArgumentOf(std::string_view row) {
    return base::LeadingNumber(row.substr(std::min(row.find(' '), row.size())));
  }

  const std::string bytes_ = SourceOfHelp("demo.CMD");
  std::vector<std::string> rows_;
};

TEST_F(DemoList, IsACommandFile) {
  EXPECT_GT(rows_.size(), 100u);
  EXPECT_LE(rows_.size(), 170u);
  EXPECT_TRUE(bytes_.ends_with("\r\n"));
  EXPECT_EQ(std::ranges::count(bytes_, '\n'), std::ssize(rows_));
  EXPECT_EQ(std::ranges::count(bytes_, '\r'), std::ssize(rows_));
  EXPECT_NE(std::ranges::find(rows_, "$WRITELOG Vorführung_beginnt"), rows_.end());
}

TEST_F(DemoList, UsesExactlyTheSpecialCommands) {
  for (const std::string_view command : kSpecialCommands) EXPECT_GT(Count(command), 0) << command;
  for (const std::string& row : rows_) {
    if (!row.starts_with("$")) continue;
    EXPECT_NE(std::ranges::find(kSpecialCommands, FirstWord(row)), kSpecialCommands.end()) << row;
  }
}

TEST_F(DemoList, RowsHaveNoSpacesAtTheirEndsAndOneArgument) {
  for (const std::string& row : rows_) {
    EXPECT_EQ(base::TrimSpaces(row), row);
    if (row.starts_with("$")) {
      EXPECT_LE(std::ranges::count(row, ' '), 1) << row;
    }
  }
}

// The remarks are what a user reads: none is cut off in the window as it first opens.
TEST_F(DemoList, RemarksFitTheGrid) {
  constexpr std::size_t kColumns = 48;
  for (const std::string& row : rows_) {
    if (row.starts_with("'")) {
      EXPECT_LE(base::ToWindows1252(row).size(), kColumns) << row;
    }
  }
}

TEST_F(DemoList, EveryJumpHasItsTarget) {
  for (const std::string& row : rows_) {
    if (FirstWord(row) != "$GOTO") continue;
    EXPECT_NE(std::ranges::find(rows_, row.substr(row.find(' ') + 1) + ":"), rows_.end()) << row;
  }
}

// A label that a run reaches without a jump would be sent as a command.
TEST_F(DemoList, LabelsOutsideCommentsAreAfterTheStop) {
  const auto stop = std::ranges::find(rows_, "$STOP");
  ASSERT_NE(stop, rows_.end());
  EXPECT_TRUE(std::none_of(rows_.begin(), stop, [](const std::string& row) {
    return row.ends_with(":") && !row.starts_with("'");
  }));
}

TEST_F(DemoList, StaysConnected) {
  for (const std::string& row : rows_) {
    if (row.starts_with("'") || row.starts_with("$")) continue;
    for (const char* word : {"DCL", "RES", "*RST"}) EXPECT_FALSE(base::ContainsNoCase(row, word)) << row;
  }
}

// The run ends on the grid's last row, far from the remarks: the last answers say what comes next.
TEST_F(DemoList, EndsWithAnswersThatSayWhatComesNext) {
  const auto stop = std::ranges::find(rows_, "$STOP");
  ASSERT_NE(stop, rows_.end());
  EXPECT_TRUE(std::prev(stop)->starts_with("ECHO ")) << *std::prev(stop);
  const auto binary = [](const std::string& row) { return row.find("BIN? ") != std::string::npos; };
  EXPECT_TRUE(std::any_of(rows_.begin(), stop, binary));
}

TEST_F(DemoList, ClosesItsLoopsAndSilentRows) {
  EXPECT_EQ(Count("$REPEAT"), Count("$ENDREPEAT"));
  EXPECT_EQ(std::ranges::count(rows_, "$SILENT ON"), std::ranges::count(rows_, "$SILENT OFF"));
  EXPECT_EQ(std::ranges::count(rows_, "$AUTOLOG ON"), std::ranges::count(rows_, "$AUTOLOG OFF"));
}

// Each jump out of a condition lands before the condition's own $ENDIF, or before another that replaces it.
TEST_F(DemoList, ClosesItsConditions) {
  const auto opened = Count("$IFERR") + Count("$IFEQUAL") + Count("$IFGREATER") + Count("$IFLESS");
  constexpr auto kJumpsOutOfConditions = 2;
  EXPECT_EQ(Count("$ENDIF"), opened + kJumpsOutOfConditions);
}

TEST_F(DemoList, NestsALoopAndWaitsForAFewSecondsOnly) {
  double milliseconds = 0;
  std::vector<double> passes = {1};
  std::size_t deepest = 0;
  for (const std::string& row : rows_) {
    if (FirstWord(row) == "$REPEAT") passes.push_back(passes.back() * (ArgumentOf(row) + 1));
    if (FirstWord(row) == "$ENDREPEAT") passes.pop_back();
    if (FirstWord(row) == "$DELAY") milliseconds += passes.back() * ArgumentOf(row);
    deepest = std::max(deepest, passes.size() - 1);
  }
  EXPECT_EQ(deepest, 2u);
  EXPECT_GT(milliseconds, 0);
  EXPECT_LT(milliseconds, 5000);
}

}  // namespace
}  // namespace kolvane::help
