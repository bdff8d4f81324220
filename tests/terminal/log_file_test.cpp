#include "terminal/log_control.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

#include "base/small_files.h"
#include "base/temp_folder.h"

namespace kolvane::terminal {
namespace {

class LogFileTest : public testing::Test {
 protected:
  std::string Content() const { return base::ReadBytes(path_); }

  base::TempFolder folder_;
  std::string path_ = folder_.Path("a.LOG");
  LogFile log_;
};

TEST_F(LogFileTest, EachLineReachesTheFileAtOnceInWindows1252) {
  ASSERT_EQ(log_.Open(path_), 0);
  EXPECT_EQ(log_.WriteLine("Größe 5 €"), 0);
  EXPECT_EQ(Content(), "Gr\xF6\xDF\x65 5 \x80\r\n");
  EXPECT_EQ(log_.WriteLine(""), 0);
  EXPECT_EQ(Content(), "Gr\xF6\xDF\x65 5 \x80\r\n\r\n");
}

TEST_F(LogFileTest, KeepsEveryByteOfALine) {
  ASSERT_EQ(log_.Open(path_), 0);
  EXPECT_EQ(log_.WriteLine(std::string_view("a\0b\nc\x1B", 6)), 0);
  EXPECT_EQ(Content(), std::string("a\0b\nc\x1B\r\n", 8));
}

TEST_F(LogFileTest, AppendsToWhatTheFileHolds) {
  ASSERT_EQ(log_.Open(path_), 0);
  EXPECT_EQ(log_.WriteLine("eins"), 0);
  log_.Close();
  ASSERT_EQ(log_.Open(path_), 0);
  EXPECT_EQ(log_.WriteLine("zwei"), 0);
  EXPECT_EQ(Content(), "eins\r\nzwei\r\n");
}

TEST_F(LogFileTest, ClosesOnce) {
  ASSERT_EQ(log_.Open(path_), 0);
  log_.Close();
  log_.Close();
  EXPECT_FALSE(log_.IsOpen());
  EXPECT_EQ(log_.WriteLine("verloren"), EBADF);
  EXPECT_EQ(Content(), "");
}

TEST_F(LogFileTest, ReportsWhyItCannotBeOpened) {
  EXPECT_EQ(log_.Open("/nirgends/x.LOG"), ENOENT);
  EXPECT_EQ(log_.Open(folder_.Path("")), EISDIR);
  EXPECT_EQ(log_.Open(std::string("a\0b", 3)), EINVAL);
  EXPECT_FALSE(log_.IsOpen());
}

TEST_F(LogFileTest, DoesNotWaitForAPipesReader) {
  ASSERT_EQ(mkfifo(path_.c_str(), 0666), 0);
  EXPECT_EQ(log_.Open(path_), ENXIO);
}

TEST_F(LogFileTest, ALineWithoutSpaceIsNotWrittenInPart) {
  ASSERT_EQ(log_.Open(path_), 0);
  EXPECT_EQ(log_.WriteLine("eins"), 0);
  const base::SmallFiles small(10);
  EXPECT_EQ(log_.WriteLine("zwei oder drei"), EFBIG);
  EXPECT_EQ(Content(), "eins\r\n");
  EXPECT_EQ(log_.WriteLine("5."), 0);
  EXPECT_EQ(Content(), "eins\r\n5.\r\n");
}

TEST_F(LogFileTest, LinesWrittenByAnotherProcessAreKept) {
  LogFile other;
  ASSERT_EQ(log_.Open(path_), 0);
  ASSERT_EQ(other.Open(path_), 0);
  EXPECT_EQ(log_.WriteLine("1"), 0);
  EXPECT_EQ(other.WriteLine("2"), 0);
  const base::SmallFiles small(8);
  EXPECT_EQ(log_.WriteLine("zu lang"), EFBIG);
  EXPECT_EQ(Content(), "1\r\n2\r\n");
}

TEST_F(LogFileTest, ReportsWhyALineCannotBeWritten) {
  ASSERT_EQ(log_.Open("/dev/full"), 0);
  EXPECT_EQ(log_.WriteLine("x"), ENOSPC);
}

}  // namespace
}  // namespace kolvane::terminal
