#include "base/files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <thread>
#include <vector>

#include "base/descriptor.h"
#include "base/temp_folder.h"
#include "base/unprivileged_user.h"

namespace kolvane::base {
namespace {

class ReadFileTest : public testing::Test {
 protected:
  TempFolder folder;
  std::string file = folder.Path("a");
  std::string bytes = "before";
};

TEST_F(ReadFileTest, ReturnsEveryByteAtEverySize) {
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

TEST_F(ReadFileTest, ReportsWhyItFailsAndReturnsNothing) {
  EXPECT_EQ(ReadFile(file, bytes), ENOENT);
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(ReadFile(folder.Path(""), bytes), EISDIR);
  EXPECT_EQ(ReadFile("", bytes), ENOENT);
  WriteBytes(file, "x");
  chmod(file.c_str(), 0);
  chmod(folder.Path("").c_str(), 0777);
  const UnprivilegedUser user;
  EXPECT_EQ(ReadFile(file, bytes), EACCES);
}

TEST_F(ReadFileTest, APipeOrADeviceIsEmpty) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(ReadFile(file, bytes), 0);
  EXPECT_EQ(bytes, "");
  EXPECT_EQ(ReadFile("/dev/zero", bytes), 0);
  EXPECT_EQ(bytes, "");
}

class ReadPiecesTest : public ReadFileTest {
 protected:
  ReadPiecesTest() { bytes.clear(); }

  static bool Never(int /*waited_ms*/) { return false; }
  bool Take(std::string_view piece) {
    bytes += piece;
    return true;
  }
  int Read(const GiveUp& give_up = Never) {
    return ReadPieces(
        file, [this](std::string_view piece) { return Take(piece); }, give_up);
  }
};

TEST_F(ReadPiecesTest, DeliversAFile) {
  const std::string content(200000, 'x');
  WriteBytes(file, content);
  EXPECT_EQ(Read(), 0);
  EXPECT_TRUE(bytes == content);
}

TEST_F(ReadPiecesTest, ReportsWhyItFails) {
  EXPECT_EQ(Read(), ENOENT);
  file = folder.Path("");
  EXPECT_EQ(Read(), EISDIR);
}

TEST_F(ReadPiecesTest, ReadsAPipeUntilItsWriterCloses) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  std::jthread writer([this] {
    const Descriptor end(open(file.c_str(), O_WRONLY | O_CLOEXEC));
    for (const char* part : {"a", "b"}) EXPECT_EQ(write(end.get(), part, 1), 1);
  });
  EXPECT_EQ(Read(), 0);
  EXPECT_EQ(bytes, "ab");
}

TEST_F(ReadPiecesTest, GivesUpAPipeThatNobodyWritesTo) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  std::vector<int> waited;
  EXPECT_EQ(Read([&waited](int ms) {
              waited.push_back(ms);
              return ms >= 100;
            }),
            ETIMEDOUT);
  EXPECT_EQ(waited, (std::vector{0, 50, 100}));
}

TEST_F(ReadPiecesTest, GivesUpAPipeWhoseWriterFallsSilent) {
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  const Descriptor writer(open(file.c_str(), O_RDWR | O_CLOEXEC));
  ASSERT_EQ(write(writer.get(), "a", 1), 1);
  EXPECT_EQ(Read([](int ms) { return ms > 0; }), ETIMEDOUT);
  EXPECT_EQ(bytes, "a");
}

TEST_F(ReadPiecesTest, EndsWhenNoMoreIsNeeded) {
  file = "/dev/zero";
  int pieces = 0;
  EXPECT_EQ(ReadPieces(
                file, [&pieces](std::string_view) { return ++pieces < 3; }, Never),
            0);
  EXPECT_EQ(pieces, 3);
}

}  // namespace
}  // namespace kolvane::base
