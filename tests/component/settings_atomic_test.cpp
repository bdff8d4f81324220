#include <gtest/gtest.h>
#include <sched.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <barrier>
#include <cerrno>
#include <csignal>
#include <thread>

#include "base/files.h"
#include "base/in_child.h"
#include "base/small_disk.h"
#include "base/small_files.h"
#include "component/stored_settings.h"

namespace kolvane::component {
namespace {

constexpr std::int16_t kOld = 1;
constexpr std::int16_t kNew = 2;

class SettingsAtomicTest : public testing::Test {
 protected:
  static int Save(const std::string& file, std::int16_t number, std::size_t length = 20) {
    StoredSettings settings;
    settings.FillWith(number, length);
    return settings.Save(file);
  }

  // Which version the file holds, -1 for none or a mixture.
  static std::int16_t VersionIn(const std::string& file) {
    StoredSettings settings;
    return settings.Load(file).empty() ? settings.FilledWith() : std::int16_t{-1};
  }

  base::TempFolder folder_;
  std::string file_ = folder_.Path("a.ini");
};

// Runs the child from system call to system call and kills it at the given one. False if it finished before.
bool KillAtCall(pid_t child, int call) {
  int status = 0;
  waitpid(child, &status, 0);
  ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_EXITKILL);
  for (int i = 0; i < call; ++i) {
    if (ptrace(PTRACE_SYSCALL, child, nullptr, nullptr) != 0) break;
    waitpid(child, &status, 0);
    if (!WIFSTOPPED(status)) return false;
  }
  kill(child, SIGKILL);
  waitpid(child, &status, 0);
  return true;
}

TEST_F(SettingsAtomicTest, KilledAtAnySystemCallTheFileIsTheOldOrTheNewOne) {
  ASSERT_EQ(Save(file_, kOld), 0);
  int old_versions = 0;
  int new_versions = 0;
  for (int call = 1;; ++call) {
    ASSERT_LT(call, 2000);
    const pid_t child = base::InChild([&] {
      if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(2);
      raise(SIGSTOP);
      _exit(Save(file_, kNew));
    });
    ASSERT_GT(child, 0);
    if (!KillAtCall(child, call)) break;
    const std::int16_t version = VersionIn(file_);
    ASSERT_TRUE(version == kOld || version == kNew) << "killed at call " << call;
    ++(version == kOld ? old_versions : new_versions);
    // Left-over files do not prevent the next save.
    ASSERT_EQ(Save(file_, kOld), 0);
    ASSERT_EQ(VersionIn(file_), kOld);
  }
  EXPECT_GT(old_versions, 0);
  EXPECT_GT(new_versions, 0) << "some calls come after the exchange";
  EXPECT_EQ(VersionIn(file_), kNew) << "the last child was not killed";
}

TEST_F(SettingsAtomicTest, KilledWhileItSavesRepeatedlyTheFileIsWhole) {
  constexpr int kSaves = 20;
  for (int saves = 1; saves <= kSaves; ++saves) {
    int done[2];
    ASSERT_EQ(pipe(done), 0);
    const pid_t child = base::InChild([&] {
      for (std::int16_t i = 1; Save(file_, i, 5000) == 0 && write(done[1], "x", 1) == 1; ++i) {
      }
    });
    ASSERT_GT(child, 0);
    close(done[1]);
    char byte;
    for (int i = 0; i < saves; ++i) ASSERT_EQ(read(done[0], &byte, 1), 1);
    // Kill it at some point of the next save.
    for (int i = 0; i < saves * 20; ++i) sched_yield();
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(done[0]);
    ASSERT_GE(VersionIn(file_), saves);
  }
}

TEST_F(SettingsAtomicTest, AFileSizeLimitLeavesTheOldFileAndDoesNotKill) {
  ASSERT_EQ(Save(file_, kOld), 0);
  for (const rlim_t limit : {0, 1, 100, 4000}) {
    const base::SmallFiles small(limit);
    EXPECT_EQ(Save(file_, kNew, 5000), EFBIG);
  }
  EXPECT_EQ(VersionIn(file_), kOld);
  EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.ini"});
}

TEST_F(SettingsAtomicTest, AFullDiskLeavesTheOldFile) {
  const bool mounted = base::OnSmallDisk(folder_.Path(""), [&] {
    ASSERT_EQ(Save(file_, kOld), 0);
    for (std::size_t spare = 0; spare <= 48 * 1024; spare += 4096) {
      base::FillDisk(folder_.Path("filler"), spare);
      const int error = Save(file_, kNew, 5000);
      EXPECT_TRUE(error == 0 || error == ENOSPC) << error;
      EXPECT_EQ(error == ENOSPC, spare < 32 * 1024) << spare;
      EXPECT_EQ(VersionIn(file_), error == 0 ? kNew : kOld) << spare;
      EXPECT_EQ(folder_.Names(), (std::vector<std::string>{"a.ini", "filler"}));
      std::filesystem::remove(folder_.Path("filler"));
      ASSERT_EQ(Save(file_, kOld), 0);
    }
  });
  if (!mounted) GTEST_SKIP() << "this user may not mount a small disk";
}

class SeveralSettingsTest : public SettingsAtomicTest {
 protected:
  // No more: FolderLock gives up after two seconds, in which a busy disk may not complete two saves.
  static constexpr std::int16_t kSavers = 2;
  static constexpr int kRounds = 30;

  // Saves as a terminal does when it ends, after a key of a newer program was added.
  void SaveWithExtraKey(std::int16_t number) const {
    const auto store = OpenIniStore(file_);
    store->Write("EXTRA", "K" + std::to_string(number), std::to_string(number));
    StoredSettings settings;
    settings.FillWith(number);
    EXPECT_FALSE(SaveSettings(*store, settings.Target()));
  }

  void ExpectOneVersionAndAllExtraKeys() const {
    const std::int16_t version = VersionIn(file_);
    EXPECT_TRUE(version >= 1 && version <= kSavers) << version;
    for (std::int16_t i = 1; i <= kSavers; ++i)
      EXPECT_EQ(OpenIniStore(file_)->Read("EXTRA", "K" + std::to_string(i), ""), std::to_string(i));
    EXPECT_EQ(folder_.Names(), std::vector<std::string>{"a.ini"});
  }
};

TEST_F(SeveralSettingsTest, ThreadsThatCloseAtOnceLoseNothing) {
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove(file_);
    std::barrier start(kSavers);
    std::vector<std::thread> threads;
    for (std::int16_t i = 1; i <= kSavers; ++i) {
      threads.emplace_back([&, i] {
        start.arrive_and_wait();
        SaveWithExtraKey(i);
      });
    }
    for (std::thread& thread : threads) thread.join();
    ExpectOneVersionAndAllExtraKeys();
  }
}

TEST_F(SeveralSettingsTest, ProcessesThatCloseAtOnceLoseNothing) {
  for (int round = 0; round < kRounds; ++round) {
    std::filesystem::remove(file_);
    int start[2];
    ASSERT_EQ(pipe(start), 0);
    std::vector<pid_t> children;
    for (std::int16_t i = 1; i <= kSavers; ++i) {
      children.push_back(base::InChild([&] {
        close(start[1]);
        char byte;
        // Every child wakes up when the parent closes its end.
        if (read(start[0], &byte, 1) == 0) SaveWithExtraKey(i);
        _exit(testing::Test::HasFailure());
      }));
    }
    close(start[0]);
    close(start[1]);
    for (const pid_t child : children) {
      int status = -1;
      waitpid(child, &status, 0);
      EXPECT_EQ(status, 0);
    }
    ExpectOneVersionAndAllExtraKeys();
  }
}

TEST_F(SeveralSettingsTest, TheLastOneToCloseWins) {
  const auto first = OpenIniStore(file_);
  const auto second = OpenIniStore(file_);
  StoredSettings settings;
  settings.FillWith(1);
  ASSERT_FALSE(SaveSettings(*second, settings.Target()));
  settings.FillWith(2);
  ASSERT_FALSE(SaveSettings(*first, settings.Target()));
  EXPECT_EQ(VersionIn(file_), 2);
}

TEST_F(SeveralSettingsTest, AHolderThatNeverEndsDoesNotKeepOthersFromSaving) {
  const base::FolderLock stopped(folder_.Path(""));
  ASSERT_TRUE(stopped.IsHeld());
  EXPECT_EQ(Save(file_, kNew), 0);
  EXPECT_EQ(VersionIn(file_), kNew);
}

TEST_F(SeveralSettingsTest, LockFilesOfOthersDoNotMatter) {
  base::WriteBytes(file_ + ".lock", "");
  EXPECT_EQ(Save(file_, kNew), 0);
  EXPECT_EQ(VersionIn(file_), kNew);
}

}  // namespace
}  // namespace kolvane::component
