#include "base/files.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <barrier>
#include <cerrno>
#include <thread>

#include "base/in_child.h"
#include "base/small_files.h"
#include "base/temp_folder.h"
#include "base/unprivileged_user.h"

namespace kolvane::base {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class ReplaceFileTest : public testing::Test {
 protected:
  mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
  }

  TempFolder folder;
  std::string file = folder.Path("a.CMD");
};

TEST_F(ReplaceFileTest, CreatesANewFileAsTheMaskAllows) {
  const mode_t mask = umask(027);
  EXPECT_EQ(ReplaceFile(file, "new"), 0);
  umask(mask);
  EXPECT_EQ(ReadBytes(file), "new");
  EXPECT_EQ(ModeOf(file), 0640u);
  EXPECT_EQ(folder.Names(), Names{"a.CMD"});
}

TEST_F(ReplaceFileTest, KeepsTheModeOfTheOldFile) {
  WriteBytes(file, "old and longer");
  chmod(file.c_str(), 0604);
  EXPECT_EQ(ReplaceFile(file, "new"), 0);
  EXPECT_EQ(ReadBytes(file), "new");
  EXPECT_EQ(ModeOf(file), 0604u);
}

TEST_F(ReplaceFileTest, ReplacesAtOnceSoThatAnOpenFileStaysWhole) {
  WriteBytes(file, "old");
  std::ifstream reader(file);
  EXPECT_EQ(ReplaceFile(file, "new"), 0);
  std::string seen;
  reader >> seen;
  EXPECT_EQ(seen, "old");
}

TEST_F(ReplaceFileTest, FollowsLinks) {
  fs::create_directory(folder.Path("sub"));
  WriteBytes(folder.Path("sub/target"), "old");
  fs::create_symlink("sub/second", file);
  fs::create_symlink("target", folder.Path("sub/second"));
  EXPECT_EQ(ReplaceFile(file, "new"), 0);
  EXPECT_EQ(ReadBytes(folder.Path("sub/target")), "new");
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_TRUE(fs::is_symlink(folder.Path("sub/second")));
}

TEST_F(ReplaceFileTest, ALinkToNothingCreatesTheFile) {
  fs::create_symlink(folder.Path("target"), file);
  EXPECT_EQ(ReplaceFile(file, "new"), 0);
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_EQ(ReadBytes(folder.Path("target")), "new");
}

TEST_F(ReplaceFileTest, ALinkInACircleFails) {
  fs::create_symlink("a.CMD", file);
  EXPECT_EQ(ReplaceFile(file, "new"), ELOOP);
}

TEST_F(ReplaceFileTest, AnIncompleteWriteLeavesTheOldFile) {
  WriteBytes(file, "old");
  {
    const SmallFiles small(1000);
    EXPECT_EQ(ReplaceFile(file, std::string(1001, 'x')), EFBIG);
    EXPECT_EQ(ReadBytes(file), "old");
    EXPECT_EQ(folder.Names(), Names{"a.CMD"});
    EXPECT_EQ(ReplaceFile(file, std::string(1000, 'x')), 0);
  }
  EXPECT_EQ(ReadBytes(file).size(), 1000u);
}

TEST_F(ReplaceFileTest, LeftOverFilesOfACrashDoNotMatter) {
  WriteBytes(folder.Path(".kolvane-" + std::to_string(getpid()) + "-0"), "left over");
  EXPECT_EQ(ReplaceFile(file, "new"), 0);
  EXPECT_EQ(ReadBytes(file), "new");
}

TEST_F(ReplaceFileTest, WritesToADeviceDirectly) {
  EXPECT_EQ(ReplaceFile("/dev/null", "gone"), 0);
  EXPECT_EQ(ReplaceFile("/dev/full", "too much"), ENOSPC);
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(ReplaceFileTest, DoesNotWaitForAPipesReader) {
  ASSERT_EQ(mkfifo(file.c_str(), 0666), 0);
  EXPECT_EQ(ReplaceFile(file, "new"), ENXIO);
}

TEST_F(ReplaceFileTest, ReportsWhyItCannotWrite) {
  EXPECT_EQ(ReplaceFile(folder.Path("none/a.CMD"), "x"), ENOENT);
  EXPECT_EQ(ReplaceFile(folder.Path(""), "x"), EISDIR);
  EXPECT_EQ(ReplaceFile("", "x"), ENOENT);
  EXPECT_EQ(ReplaceFile(folder.Path(std::string(300, 'n')), "x"), ENAMETOOLONG);
  WriteBytes(file, "old");
  EXPECT_EQ(ReplaceFile(file + "/b", "x"), ENOTDIR);
}

TEST_F(ReplaceFileTest, AFileThatMayNotBeWrittenIsNotReplaced) {
  WriteBytes(file, "old");
  chmod(file.c_str(), 0444);
  chmod(folder.Path("").c_str(), 0777);
  const UnprivilegedUser user;
  EXPECT_EQ(ReplaceFile(file, "new"), EACCES);
  EXPECT_EQ(ReadBytes(file), "old");
}

TEST_F(ReplaceFileTest, AFileOfSomebodyElseKeepsItsGroup) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  constexpr gid_t kShared = 60001;
  WriteBytes(file, "old");
  ASSERT_EQ(chown(folder.path().c_str(), 60002, kShared), 0);
  ASSERT_EQ(chmod(folder.path().c_str(), 0770), 0);
  ASSERT_EQ(chown(file.c_str(), 60002, kShared), 0);
  ASSERT_EQ(chmod(file.c_str(), 0664), 0);
  const pid_t child = InChild([&] {
    const bool member = setgroups(1, &kShared) == 0 && setgid(60003) == 0 && setuid(60003) == 0;
    _exit(member && ReplaceFile(file, "new") == 0 ? 0 : 1);
  });
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  struct stat about {};
  ASSERT_EQ(stat(file.c_str(), &about), 0);
  EXPECT_EQ(about.st_gid, kShared);
  EXPECT_EQ(ModeOf(file), 0664u);
  EXPECT_EQ(ReadBytes(file), "new");
}

TEST_F(ReplaceFileTest, CreatesOnlyAFileThatDoesNotExist) {
  EXPECT_EQ(CreateFile(file, "first"), 0);
  EXPECT_EQ(CreateFile(file, "second"), EEXIST);
  EXPECT_EQ(ReadBytes(file), "first");
  fs::create_symlink("none", folder.Path("link"));
  EXPECT_EQ(CreateFile(folder.Path("link"), "x"), EEXIST);
  EXPECT_EQ(CreateFile(folder.Path("none/b"), "x"), ENOENT);
  EXPECT_EQ(folder.Names(), (Names{"a.CMD", "link"}));
}

TEST_F(ReplaceFileTest, OnlyOneOfSeveralCreatesTheFile) {
  for (int round = 0; round < 20; ++round) {
    fs::remove(file);
    std::atomic<int> made{-1};
    std::atomic<int> others{0};
    std::barrier start(4);
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
      threads.emplace_back([&, i] {
        start.arrive_and_wait();
        const int error = CreateFile(file, std::to_string(i));
        if (error == 0) made = i;
        if (error == EEXIST) ++others;
      });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(others, 3);
    EXPECT_EQ(ReadBytes(file), std::to_string(made));
    EXPECT_EQ(folder.Names(), Names{"a.CMD"});
  }
}

TEST_F(ReplaceFileTest, ANameWithoutFolderIsInTheCurrentOne) {
  const fs::path before = fs::current_path();
  fs::current_path(folder.Path(""));
  EXPECT_EQ(ReplaceFile("plain", "new"), 0);
  fs::current_path(before);
  EXPECT_EQ(ReadBytes(folder.Path("plain")), "new");
}

TEST_F(ReplaceFileTest, TakesPiecesUntilItIsCommitted) {
  WriteBytes(file, "old");
  FileReplacement replacement;
  ASSERT_EQ(replacement.Open(file), 0);
  EXPECT_EQ(replacement.Write("one "), 0);
  EXPECT_EQ(replacement.Write("two"), 0);
  EXPECT_EQ(ReadBytes(file), "old");
  EXPECT_EQ(replacement.Commit(), 0);
  EXPECT_EQ(ReadBytes(file), "one two");
  EXPECT_EQ(folder.Names(), Names{"a.CMD"});
}

TEST_F(ReplaceFileTest, ReportsWhyTheLastStepFailed) {
  FileReplacement replacement;
  FileReplacement creation;
  ASSERT_EQ(replacement.Open(file), 0);
  ASSERT_EQ(creation.OpenNew(file), 0);
  fs::create_directory(file);
  EXPECT_EQ(replacement.Commit(), EISDIR);
  EXPECT_EQ(creation.Commit(), EEXIST);
  EXPECT_TRUE(fs::is_directory(file));
}

TEST_F(ReplaceFileTest, LeavesTheFileAsItWasWithoutACommit) {
  WriteBytes(file, "old");
  {
    FileReplacement replacement;
    ASSERT_EQ(replacement.Open(file), 0);
    EXPECT_EQ(replacement.Write("new"), 0);
    EXPECT_EQ(folder.Names().size(), 2u);
  }
  EXPECT_EQ(ReadBytes(file), "old");
  EXPECT_EQ(folder.Names(), Names{"a.CMD"});
}

}  // namespace
}  // namespace kolvane::base
