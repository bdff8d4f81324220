#include "base/descriptor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

#include "base/small_files.h"
#include "base/temp_folder.h"

namespace kolvane::base {
namespace {

class WriteAllTest : public testing::Test {
 protected:
  ~WriteAllTest() override { close(descriptor_); }

  TempFolder folder_;
  std::string file_ = folder_.Path("a");
  int descriptor_ = open(file_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
};

TEST_F(WriteAllTest, WritesEveryByte) {
  const std::string bytes("a\0b", 3);
  EXPECT_EQ(WriteAll(descriptor_, bytes), 0);
  EXPECT_EQ(WriteAll(descriptor_, ""), 0);
  EXPECT_EQ(ReadBytes(file_), bytes);
}

TEST_F(WriteAllTest, AFileAtItsLimitIsAFailureAndNoSignal) {
  const SmallFiles small(10);
  EXPECT_EQ(WriteAll(descriptor_, "0123456789"), 0);
  EXPECT_EQ(WriteAll(descriptor_, "x"), EFBIG);
  EXPECT_EQ(ReadBytes(file_), "0123456789");
}

TEST_F(WriteAllTest, APipeWithoutReaderIsAFailureAndNoSignal) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  close(ends[0]);
  EXPECT_EQ(WriteAll(ends[1], "x"), EPIPE);
  close(ends[1]);
}

TEST(WriteAllWaiting, WaitsForTheReaderOfANonBlockingPipe) {
  int ends[2];
  ASSERT_EQ(pipe2(ends, O_NONBLOCK | O_CLOEXEC), 0);
  const std::string bytes(1'000'000, 'x');
  EXPECT_EQ(WriteAll(ends[1], bytes), EAGAIN);
  std::size_t left = bytes.size();
  char piece[4096];
  while (read(ends[0], piece, sizeof piece) > 0) {
  }
  std::thread reader([&] {
    while (left > 0) {
      Await(ends[0], POLLIN);
      const ssize_t got = read(ends[0], piece, sizeof piece);
      if (got > 0) left -= static_cast<std::size_t>(got);
    }
  });
  EXPECT_EQ(WriteAllWaiting(ends[1], bytes), 0);
  reader.join();
  close(ends[0]);
  EXPECT_EQ(WriteAllWaiting(ends[1], "x"), EPIPE);
  close(ends[1]);
}

TEST_F(WriteAllTest, LeavesTheSignalMaskAsItWas) {
  const SmallFiles small(0);
  EXPECT_EQ(WriteAll(descriptor_, "x"), EFBIG);
  sigset_t mask;
  sigset_t pending;
  pthread_sigmask(SIG_BLOCK, nullptr, &mask);
  sigpending(&pending);
  for (const int number : {SIGXFSZ, SIGPIPE}) {
    EXPECT_EQ(sigismember(&mask, number), 0);
    EXPECT_EQ(sigismember(&pending, number), 0);
  }
}

TEST_F(WriteAllTest, ReportsHowMuchWasWritten) {
  const SmallFiles small(10);
  std::size_t written = 0;
  EXPECT_EQ(WriteAll(descriptor_, "01234567", &written), 0);
  EXPECT_EQ(written, 8u);
  EXPECT_EQ(WriteAll(descriptor_, "89x", &written), EFBIG);
  EXPECT_EQ(written, 2u);
}

TEST_F(WriteAllTest, AWriteWithoutRoomIsUndoneCompletely) {
  const Descriptor file(open(file_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  const SmallFiles small(10);
  EXPECT_EQ(AppendWhole(file.get(), "01234567"), 0);
  EXPECT_EQ(AppendWhole(file.get(), "89x"), EFBIG);
  EXPECT_EQ(ReadBytes(file_), "01234567");
  EXPECT_EQ(AppendWhole(file.get(), "89"), 0);
  EXPECT_EQ(ReadBytes(file_), "0123456789");
}

TEST_F(WriteAllTest, ReportsWhy) {
  EXPECT_EQ(WriteAll(-1, "x"), EBADF);
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  EXPECT_EQ(WriteAll(full, "x"), ENOSPC);
  close(full);
}

}  // namespace
}  // namespace kolvane::base
