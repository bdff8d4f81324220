#include "base/files.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <atomic>
#include <csignal>
#include <optional>
#include <thread>

#include "base/temp_folder.h"

namespace kolvane::base {
namespace {

using std::chrono::milliseconds;

class FolderLockTest : public testing::Test {
 protected:
  bool IsFree() { return FolderLock(folder.Path(""), milliseconds(0)).IsHeld(); }
  TempFolder folder;
};

TEST_F(FolderLockTest, KeepsOthersOutForAsLongAsItLives) {
  {
    const FolderLock lock(folder.Path(""));
    EXPECT_TRUE(lock.IsHeld());
    EXPECT_FALSE(IsFree());
  }
  EXPECT_TRUE(IsFree());
  EXPECT_TRUE(folder.Names().empty());
}

TEST_F(FolderLockTest, OneThreadAtATimeHoldsIt) {
  int inside = 0;  // guarded by the lock only
  std::atomic<int> most{0};
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 50; ++round) {
        const FolderLock lock(folder.Path(""), std::chrono::minutes(1));
        if (!lock.IsHeld() || ++inside > 1) most = 2;
        --inside;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(most, 0);
}

TEST_F(FolderLockTest, IsFreeWhenItsHolderHasBeenKilled) {
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t child = fork();
  if (child == 0) {
    const FolderLock lock(folder.Path(""));
    const char byte = lock.IsHeld() ? '1' : '0';
    if (write(ready[1], &byte, 1) == 1) pause();
    _exit(1);
  }
  char byte = 0;
  ASSERT_EQ(read(ready[0], &byte, 1), 1);
  EXPECT_EQ(byte, '1');
  EXPECT_FALSE(IsFree());
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_TRUE(IsFree());
  close(ready[0]);
  close(ready[1]);
}

TEST_F(FolderLockTest, IsNotHeldWithoutAFolder) {
  EXPECT_FALSE(FolderLock(folder.Path("none")).IsHeld());
  WriteBytes(folder.Path("file"), "");
  EXPECT_FALSE(FolderLock(folder.Path("file")).IsHeld());
}

}  // namespace
}  // namespace kolvane::base
