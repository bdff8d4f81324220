#include "base/read_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

#include "base/nobody.h"
#include "base/temp_folder.h"

namespace kolvane::base {
namespace {

class ReadFileTest : public testing::Test {
 protected:
  TempFolder folder;
  std::string file = folder.Path("a");
  std::string bytes = "before";
};

TEST_F(ReadFileTest, GivesEveryByteAtEverySize) {
  for (const std::size_t size : {0u, 1u, 65535u, 65536u, 65537u, 200000u}) {
    std::string content;
    for (std::size_t i = 0; i < size; ++i) content += static_cast<char>(i * 7);
    WriteBytes(file, content);
    EXPECT_EQ(ReadFile(file, bytes), 0);
    EXPECT_TRUE(bytes == content) << size;
  }
}

TEST_F(ReadFileTest, ReadsAFileWhoseSizeIsNotKnown) {
  EXPECT_EQ(ReadFile("/proc/self/status", bytes), 0);
  EXPECT_EQ(bytes.substr(0, 5), "Name:");
}

TEST_F(ReadFileTest, TellsWhyItCannotAndGivesNothing) {
  EXPECT_EQ(ReadFile(file, bytes), ENOENT);
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(ReadFile(folder.Path(""), bytes), EISDIR);
  EXPECT_EQ(ReadFile("", bytes), ENOENT);
  WriteBytes(file, "x");
  chmod(file.c_str(), 0);
  chmod(folder.Path("").c_str(), 0777);
  const Nobody nobody;
  EXPECT_EQ(ReadFile(file, bytes), EACCES);
}

TEST_F(ReadFileTest, APipeOrADeviceIsEmpty) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(ReadFile(file, bytes), 0);
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(ReadFile("/dev/zero", bytes), 0);
  EXPECT_EQ(bytes, "");
}

}  // namespace
}  // namespace kolvane::base
