#include "terminal/log_file.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace kolvane::terminal {
namespace {

class LogFileTest : public testing::Test {
 protected:
  ~LogFileTest() override { std::remove(path_.c_str()); }

  std::string Content() const {
    std::ostringstream bytes;
    bytes << std::ifstream(path_, std::ios::binary).rdbuf();
    return bytes.str();
  }

  std::string path_ = testing::TempDir() + "log_file_" + std::to_string(getpid()) + ".LOG";
  LogFile log_;
};

TEST_F(LogFileTest, EachLineHasReachedTheFileInWindows1252) {
  ASSERT_TRUE(log_.Open(path_));
  log_.WriteLine("Größe 5 €");
  EXPECT_EQ(Content(),
            "Gr\xF6\xDF"
            "e 5 \x80\r\n");
  log_.WriteLine("");
  EXPECT_EQ(Content(),
            "Gr\xF6\xDF"
            "e 5 \x80\r\n\r\n");
}

TEST_F(LogFileTest, AppendsToWhatIsThere) {
  ASSERT_TRUE(log_.Open(path_));
  log_.WriteLine("eins");
  log_.Close();
  ASSERT_TRUE(log_.Open(path_));
  log_.WriteLine("zwei");
  EXPECT_EQ(Content(), "eins\r\nzwei\r\n");
}

TEST_F(LogFileTest, WritesNothingWhereNoneIsOpen) {
  log_.WriteLine("verloren");
  log_.Close();
  EXPECT_FALSE(log_.IsOpen());
  EXPECT_EQ(Content(), "");
}

TEST_F(LogFileTest, SaysWhyItCannotBeOpened) {
  EXPECT_FALSE(log_.Open("/nirgends/x.LOG"));
  EXPECT_EQ(errno, ENOENT);
}

}  // namespace
}  // namespace kolvane::terminal
