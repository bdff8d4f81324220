#include "script/command_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <thread>

#include "base/descriptor.h"
#include "base/temp_folder.h"
#include "script/list_text.h"

using namespace std::string_literals;

namespace kolvane::script {
namespace {

using Problem = FileResult::Problem;

class CommandFileTest : public testing::Test {
 protected:
  /// The list after loading a file with these bytes.
  std::string Loaded(const std::string& bytes) {
    base::WriteBytes(file, bytes);
    EXPECT_TRUE(LoadCommandFile(list, file).ok());
    return ListText(list);
  }

  base::TempFolder folder;
  std::string file = folder.Path("a.CMD");
  CommandList list;
};

TEST_F(CommandFileTest, LoadsEachLineAsARow) {
  EXPECT_EQ(Loaded("*IDN?\r\n'comment\r\n\r\n  $STOP \r\n"), ">*IDN?|'comment||  $STOP ");
  EXPECT_EQ(list.TextColor(2), syntax_color::kComment);
  EXPECT_EQ(list.TextColor(4), syntax_color::kSpecialCommand);
  EXPECT_EQ(list.file_name(), file);
  EXPECT_FALSE(list.modified());
}

TEST_F(CommandFileTest, LoadsEveryKindOfLineEnd) {
  EXPECT_EQ(Loaded("a\nb\rc\r\nd"), ">a|b|c|d");
  EXPECT_EQ(Loaded("a"), ">a");
  EXPECT_EQ(Loaded(""), "");
  EXPECT_EQ(list.file_name(), file);
}

TEST_F(CommandFileTest, LoadingReplacesEverything) {
  FillList(list, "1|2|3");
  list.SetCurrentRow(3);
  list.HighlightLine(1, 0xFF, 0xFFFFFF, true);
  EXPECT_EQ(Loaded("a\r\n"), ">a");
}

TEST_F(CommandFileTest, LoadsWindows1252) {
  EXPECT_EQ(Loaded("Gr\xF6\xDF"
                   "e \x80 \x81\r\n"),
            ">Größe € \xC2\x81");
}

TEST_F(CommandFileTest, EveryByteSurvivesARoundTrip) {
  std::string line;
  for (int byte = 0; byte < 256; ++byte) {
    if (byte != '\r' && byte != '\n') line += static_cast<char>(byte);
  }
  Loaded(line + "\r\n\0\r\n"s);
  EXPECT_EQ(list.Text(2), "\0"s);
  ASSERT_TRUE(WriteCommandFile(list, file).ok());
  EXPECT_EQ(base::ReadBytes(file).substr(0, line.size() + 5), line + "\r\n\0\r\n"s);
}

TEST_F(CommandFileTest, CountsTheLinesBeyondTheLastRow) {
  std::string lines;
  for (int row = 1; row <= 1024; ++row) lines += std::to_string(row) + "\r\n";
  Loaded(lines);
  EXPECT_EQ(list.Text(1024), "1024");
  EXPECT_EQ(list.left_out(), 0u);
  Loaded(lines + "1025");
  EXPECT_EQ(list.left_out(), 1u);
  Loaded(lines + "1025\n1026\n\n");
  EXPECT_EQ(list.left_out(), 3u);
  EXPECT_EQ(list.Text(1024), "1024");
  Loaded("a");
  EXPECT_EQ(list.left_out(), 0u);
}

TEST_F(CommandFileTest, WritesAllRows) {
  FillList(list, "*IDN?||Größe →");
  ASSERT_TRUE(WriteCommandFile(list, file).ok());
  std::string expected =
      "*IDN?\r\n\r\nGr\xF6\xDF"
      "e ?\r\n";
  for (int row = 4; row <= 1024; ++row) expected += "\r\n";
  EXPECT_EQ(base::ReadBytes(file), expected);

  list.SetText(1024, "x");
  ASSERT_TRUE(WriteCommandFile(list, file).ok());
  Loaded(base::ReadBytes(file));
  EXPECT_EQ(list.Text(1024), "x");
  EXPECT_EQ(list.left_out(), 0u);
}

TEST_F(CommandFileTest, AFileThatCannotBeReadDoesNotChangeTheList) {
  Loaded("a\r\nb");
  const FileResult missing = LoadCommandFile(list, folder.Path("none"));
  EXPECT_EQ(missing.problem, Problem::kCannotRead);
  EXPECT_EQ(missing.error, ENOENT);
  EXPECT_EQ(missing.name, folder.Path("none"));
  EXPECT_EQ(LoadCommandFile(list, folder.Path("")).error, EISDIR);
  EXPECT_EQ(ListText(list), ">a|b");
  EXPECT_EQ(list.file_name(), file);
}

TEST_F(CommandFileTest, RefusesLinesThatNoCommandFileHas) {
  const std::string longest(kLineLimit, 'x');
  Loaded("a\r\n" + longest + "\r\nb\r\n");
  EXPECT_EQ(list.Text(2).size(), kLineLimit);
  for (const char* end : {"", "\r\nb\r\n"}) {
    base::WriteBytes(file, longest + "y" + end);
    EXPECT_EQ(LoadCommandFile(list, file).problem, Problem::kLineTooLong);
  }
  EXPECT_EQ(LoadCommandFile(list, "/dev/zero").problem, Problem::kLineTooLong);
  EXPECT_EQ(list.Text(3), "b");
}

TEST_F(CommandFileTest, LoadsFromAPipe) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  std::jthread writer([this] {
    const base::Descriptor end(open(file.c_str(), O_WRONLY | O_CLOEXEC));
    EXPECT_EQ(write(end.get(), "a\r\nb", 4), 4);
  });
  EXPECT_TRUE(LoadCommandFile(list, file).ok());
  EXPECT_EQ(ListText(list), ">a|b");
}

TEST_F(CommandFileTest, APipeThatIsGivenUpDoesNotChangeTheList) {
  Loaded("a\r\nb");
  const std::string silent = folder.Path("silent");
  ASSERT_EQ(mkfifo(silent.c_str(), 0600), 0);
  const FileResult result = LoadCommandFile(list, silent, [](int) { return true; });
  EXPECT_EQ(result.problem, Problem::kCannotRead);
  EXPECT_EQ(result.error, ETIMEDOUT);
  EXPECT_EQ(ListText(list), ">a|b");
}

TEST_F(CommandFileTest, ARunningListIsNotReplaced) {
  RunFlags run{.ScriptRunning = 1};
  CommandList running(&run);
  base::WriteBytes(file, "a");
  EXPECT_EQ(LoadCommandFile(running, file).problem, Problem::kListRunning);
  EXPECT_EQ(running.LastUsedRow(), 0);
}

TEST_F(CommandFileTest, ReportsWhyItCannotWrite) {
  const FileResult full = WriteCommandFile(list, "/dev/full");
  EXPECT_EQ(full.problem, Problem::kCannotWrite);
  EXPECT_EQ(full.error, ENOSPC);
  EXPECT_EQ(full.name, "/dev/full");
  EXPECT_EQ(WriteEmptyFile(folder.Path("none/a")).error, ENOENT);
}

TEST_F(CommandFileTest, WritesAnEmptyFile) {
  base::WriteBytes(file, "old");
  EXPECT_TRUE(WriteEmptyFile(file).ok());
  EXPECT_EQ(base::ReadBytes(file), "");
}

}  // namespace
}  // namespace kolvane::script
