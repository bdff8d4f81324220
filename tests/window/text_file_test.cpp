#include "window/text_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "base/temp_folder.h"

namespace kolvane::window {
namespace {

class TextFileTest : public testing::Test {
 protected:
  int Read() {
    return ReadTextFile(file_, text_, [this](std::size_t done, std::size_t whole) {
      steps_.emplace_back(done, whole);
      return steps_.size() < steps_wanted_;
    });
  }

  base::TempFolder folder_;
  std::string file_ = folder_.Path("a.TXT");
  pane::PaneText text_;
  std::vector<std::pair<std::size_t, std::size_t>> steps_;
  std::size_t steps_wanted_ = 100;
};

TEST_F(TextFileTest, ReadsTheWholeText) {
  base::WriteBytes(file_, std::string("Gr\xF6\xDF\x65\r\n\0\x1B\n\rend", 14));
  EXPECT_EQ(Read(), 0);
  EXPECT_EQ(text_.Text("\n"), std::string("Größe\n\0\x1B\n\nend", 15));
  EXPECT_EQ(text_.caret(), 0u);
}

TEST_F(TextFileTest, AnEmptyFileIsAnEmptyText) {
  base::WriteBytes(file_, "");
  EXPECT_EQ(Read(), 0);
  EXPECT_EQ(text_.Length(), 0u);
}

TEST_F(TextFileTest, ReadsALargeFileInPieces) {
  std::string bytes;
  for (int line = 0; bytes.size() < 1000000; ++line) bytes += "line " + std::to_string(line) + "\r\n";
  base::WriteBytes(file_, bytes);
  EXPECT_EQ(Read(), 0);
  EXPECT_EQ(text_.Text("\r\n"), bytes);
  ASSERT_EQ(steps_.size(), 5u);
  EXPECT_EQ(steps_.front(), std::pair(std::size_t{0}, bytes.size()));
  EXPECT_EQ(steps_.back(), std::pair(bytes.size(), bytes.size()));
}

TEST_F(TextFileTest, CanBeCancelled) {
  base::WriteBytes(file_, std::string(1000000, 'x'));
  steps_wanted_ = 3;
  EXPECT_EQ(Read(), ECANCELED);
  EXPECT_EQ(steps_.size(), 3u);
}

TEST_F(TextFileTest, ReportsWhyItCannotRead) {
  EXPECT_EQ(Read(), ENOENT);
  file_ = folder_.Path("");
  EXPECT_EQ(Read(), EISDIR);
  file_ = "/dev/zero";
  EXPECT_EQ(Read(), ENODEV);
  file_ = folder_.Path("pipe");
  ASSERT_EQ(mkfifo(file_.c_str(), 0666), 0);
  EXPECT_EQ(Read(), ENODEV);
}

}  // namespace
}  // namespace kolvane::window
