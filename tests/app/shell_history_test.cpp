
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "app/shell_typing.h"
#include "base/small_files.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

using Lines = std::vector<std::string>;

struct ShellHistoryTest : testing::Test {
  std::string File() const { return folder.Path("state/shell-history"); }

  base::TempFolder folder;
};

TEST_F(ShellHistoryTest, IsReadInTheNextSession) {
  {
    ShellHistory first(File());
    EXPECT_TRUE(first.lines().empty());
    first.Add("*IDN?");
    first.Add("größe? 1");
  }
  EXPECT_EQ(ShellHistory(File()).lines(), (Lines{"*IDN?", "größe? 1"}));
  struct stat about {};
  ASSERT_EQ(stat(File().c_str(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777, 0600u) << "only the user may read it";
}

TEST_F(ShellHistoryTest, WithoutALineThereIsNoFile) {
  ShellHistory history(File());
  history.Add("");
  history.Add("  ");
  EXPECT_FALSE(std::filesystem::exists(folder.Path("state")));
}

TEST_F(ShellHistoryTest, TheSameLineTwiceIsKeptOnce) {
  ShellHistory history(File());
  for (const char* line : {"A", "A", "B", "A"}) history.Add(line);
  EXPECT_EQ(history.lines(), (Lines{"A", "B", "A"}));
}

TEST_F(ShellHistoryTest, SessionsSideBySideLoseNothing) {
  ShellHistory one(File());
  ShellHistory other(File());
  one.Add("A");
  other.Add("B");
  one.Add("C");
  EXPECT_EQ(ShellHistory(File()).lines(), (Lines{"A", "B", "C"}));
}

TEST_F(ShellHistoryTest, DoesNotGrowForEver) {
  std::string text;
  for (std::size_t i = 0; i < 2 * ShellHistory::kKept; ++i) text += std::to_string(i) + "\n";
  std::filesystem::create_directory(folder.Path("state"));
  base::WriteBytes(File(), text);
  const ShellHistory history(File());
  EXPECT_EQ(history.lines().size(), ShellHistory::kKept);
  EXPECT_EQ(history.lines().front(), std::to_string(ShellHistory::kKept));
  EXPECT_EQ(ShellHistory(File()).lines(), history.lines());
  EXPECT_LT(base::ReadBytes(File()).size(), text.size());
}

TEST_F(ShellHistoryTest, AFileThatCannotBeWrittenDoesNoHarm) {
  ShellHistory nowhere("/proc/none/history");
  nowhere.Add("A");
  ShellHistory none("");
  none.Add("A");
  EXPECT_EQ(nowhere.lines(), Lines{"A"});
  EXPECT_EQ(none.lines(), Lines{"A"});
}

TEST_F(ShellHistoryTest, ALineThatDoesNotFitIsNotWrittenInPart) {
  ShellHistory history(File());
  history.Add("FIRST");
  {
    const base::SmallFiles small(8);
    history.Add("SECOND");
  }
  history.Add("THIRD");
  EXPECT_EQ(base::ReadBytes(File()), "FIRST\nTHIRD\n");
}

TEST_F(ShellHistoryTest, APipeInsteadOfTheFileBlocksNobody) {
  std::filesystem::create_directory(folder.Path("state"));
  ASSERT_EQ(mkfifo(File().c_str(), 0600), 0);
  ShellHistory history(File());
  history.Add("A");
  EXPECT_EQ(history.lines(), Lines{"A"});
}

TEST_F(ShellHistoryTest, CompletesLinesAndTheirFirstWordsNewestFirst) {
  ShellHistory history("");
  for (const char* line : {"MSV? 1", "NAME 1,x", "MSV? 2", "MSV? 1", "MSV?"}) history.Add(line);
  EXPECT_EQ(history.StartingWith("MS"), (Lines{"MSV?", "MSV? 1", "MSV? 2"}));
  EXPECT_EQ(history.StartingWith("MSV?"), (Lines{"MSV? 1", "MSV? 2"}));
  EXPECT_EQ(history.StartingWith("ms"), Lines{});
}

TEST(HasGivenUp, IsEscOrCtrlC) {
  EXPECT_TRUE(HasGivenUp("\x1B"));
  EXPECT_TRUE(HasGivenUp("A\x1B"));
  EXPECT_TRUE(HasGivenUp("\x1B\x1B"));
  EXPECT_TRUE(
      HasGivenUp("A\x03"
                 "B"));
  for (const char* key : {"", "A\n", "\x1B[A", "\x1BOP", "\x1B[3~",
                          "\x1B"
                          "b"})
    EXPECT_FALSE(HasGivenUp(key)) << key;
}

TEST(CommonPrefix, IsCutAtWholeCharacters) {
  EXPECT_EQ(CommonPrefix({}), "");
  EXPECT_EQ(CommonPrefix({"MSV? 1"}), "MSV? 1");
  EXPECT_EQ(CommonPrefix({"MSV? 1", "MSV? 2", "MSX"}), "MS");
  EXPECT_EQ(CommonPrefix({"aä", "aö"}), "a");
  EXPECT_EQ(CommonPrefix({"a", ""}), "");
}

TEST(TypeAhead, ReturnsTheBytesInOrder) {
  TypeAhead typed;
  std::string all;
  std::string taken;
  for (int i = 0; i < 1000; ++i) {
    const std::string piece = std::to_string(i) + ',';
    typed.Append(piece);
    all += piece;
    for (int n = 0; n < 2; ++n) taken += typed.Take();
    if (i % 2 == 0 && !typed.empty()) {
      EXPECT_FALSE(typed.HasGivenUp());
    }
  }
  EXPECT_EQ(typed.size(), all.size() - taken.size());
  while (!typed.empty()) taken += typed.Take();
  EXPECT_EQ(taken, all);
}

TEST(TypeAhead, KnowsWhetherTheUserHasGivenUp) {
  TypeAhead typed;
  EXPECT_FALSE(typed.HasGivenUp());
  typed.Append("A\x03");
  typed.Take();
  EXPECT_TRUE(typed.HasGivenUp());
  EXPECT_FALSE(typed.HasGivenUp()) << "once";
  typed.Clear();
  typed.Append("\x03");
  typed.Take();
  EXPECT_FALSE(typed.HasGivenUp()) << "it ended a line";
  typed.Append("\x1B");
  EXPECT_TRUE(typed.HasGivenUp());
}

}  // namespace
}  // namespace kolvane::app
