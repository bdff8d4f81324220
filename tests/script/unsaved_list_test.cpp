#include "script/unsaved_list.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <utime.h>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <filesystem>

#include "base/in_child.h"
#include "base/temp_folder.h"
#include "script/list_text.h"

namespace kolvane::script {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

class UnsavedListTest : public testing::Test {
 protected:
  /// The names and rows of the lists offered, newest first.
  Names Offered() const {
    Names offered;
    for (const AbandonedCopy& copy : AbandonedCopies(folder_)) {
      CommandList list;
      EXPECT_TRUE(copy.Restore(list));
      EXPECT_EQ(list.left_out(), 0u);
      EXPECT_TRUE(list.modified());
      offered.push_back(list.file_name() + " " + ListText(list));
    }
    return offered;
  }
  std::size_t Folders() const {
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : fs::directory_iterator(folder_)) ++count;
    return count;
  }
  /// A window that was closed `age` seconds ago with a modified list.
  void AbandonList(const std::string& row, int age = 0) {
    CommandList list;
    list.SetText(1, row);
    const Names before = Paths();
    EXPECT_EQ(UnsavedCopy(folder_).Update(list), 0);
    for (const std::string& path : Paths()) {
      if (std::ranges::find(before, path) != before.end()) continue;
      const utimbuf times{std::time(nullptr) - age, std::time(nullptr) - age};
      EXPECT_EQ(utime((path + "/list").c_str(), &times), 0);
    }
  }
  Names Paths() const {
    Names paths;
    if (!fs::exists(folder_)) return paths;
    for (const auto& entry : fs::directory_iterator(folder_)) paths.push_back(entry.path().string());
    return paths;
  }

  base::TempFolder temp_;
  std::string folder_ = temp_.Path("state/Unsaved");
  CommandList list_;
};

TEST_F(UnsavedListTest, NothingIsWrittenForAListWithoutChanges) {
  UnsavedCopy copy(folder_);
  EXPECT_EQ(copy.Update(list_), 0);
  list_.ShowFile("/x/a.CMD", {"A"}, 0);
  EXPECT_EQ(copy.Update(list_), 0);
  EXPECT_FALSE(fs::exists(folder_));
  EXPECT_EQ(Offered(), Names{});
  EXPECT_FALSE(fs::exists(folder_));
}

TEST_F(UnsavedListTest, AListLeftByAWindowIsOfferedToTheNext) {
  {
    list_.ShowFile("/x/a.CMD", {"A"}, 0);
    list_.SetText(3, "MEAS:RES 5 Ω");
    UnsavedCopy copy(folder_);
    EXPECT_EQ(copy.Update(list_), 0);
    list_.SetText(4, "'");
    EXPECT_EQ(copy.Update(list_), 0);
  }
  EXPECT_EQ(Offered(), Names{"/x/a.CMD >A||MEAS:RES 5 Ω|'"});
}

TEST_F(UnsavedListTest, AListOfAnOpenWindowIsNotOffered) {
  UnsavedCopy first(folder_);
  list_.SetText(1, "A");
  EXPECT_EQ(first.Update(list_), 0);
  EXPECT_EQ(Offered(), Names{});

  UnsavedCopy second(folder_);
  CommandList other;
  other.SetText(1, "B");
  EXPECT_EQ(second.Update(other), 0);
  EXPECT_EQ(Folders(), 2u);
  EXPECT_EQ(Offered(), Names{});
}

TEST_F(UnsavedListTest, WhatIsOfferedToOneWindowIsNotOfferedToAnother) {
  AbandonList("A");
  const std::vector<AbandonedCopy> first = AbandonedCopies(folder_);
  EXPECT_EQ(first.size(), 1u);
  EXPECT_EQ(AbandonedCopies(folder_).size(), 0u);
}

TEST_F(UnsavedListTest, AKilledProgramLeavesItsList) {
  const pid_t child = base::InChild([this] {
    list_.SetText(1, "A");
    UnsavedCopy copy(folder_);
    copy.Update(list_);
    raise(SIGKILL);
  });
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(Offered(), Names{" >A"});
}

TEST_F(UnsavedListTest, SavingRemovesTheCopy) {
  UnsavedCopy copy(folder_);
  list_.SetText(1, "A");
  EXPECT_EQ(copy.Update(list_), 0);
  EXPECT_EQ(Folders(), 1u);
  list_.MarkSaved();
  EXPECT_EQ(copy.Update(list_), 0);
  EXPECT_EQ(Folders(), 0u);
  list_.SetText(1, "B");
  EXPECT_EQ(copy.Update(list_), 0);
  EXPECT_EQ(Folders(), 1u);
}

TEST_F(UnsavedListTest, AnEmptyListNeedsNoCopy) {
  UnsavedCopy copy(folder_);
  list_.SetText(1, "A");
  EXPECT_EQ(copy.Update(list_), 0);
  list_.SetText(1, "");
  EXPECT_EQ(copy.Update(list_), 0);
  EXPECT_EQ(Folders(), 0u);
}

TEST_F(UnsavedListTest, WhatIsDiscardedIsNotOfferedAgain) {
  AbandonList("A");
  AbandonedCopies(folder_).front().Remove();
  EXPECT_EQ(Offered(), Names{});
  EXPECT_EQ(Folders(), 0u);
}

TEST_F(UnsavedListTest, TheNewestFiveAreKept) {
  for (int age = 1; age <= 7; ++age) AbandonList(std::to_string(age), age * 60);
  EXPECT_EQ(Offered(), (Names{" >1", " >2", " >3", " >4", " >5"}));
  EXPECT_EQ(Folders(), 5u);
}

TEST_F(UnsavedListTest, ReportsTimeAndNumberOfRows) {
  AbandonList("A", 3600);
  const std::vector<AbandonedCopy> left = AbandonedCopies(folder_);
  ASSERT_EQ(left.size(), 1u);
  EXPECT_NEAR(static_cast<double>(left.front().saved_at()), static_cast<double>(std::time(nullptr) - 3600),
              5);
  EXPECT_EQ(left.front().size(), 1u);
  EXPECT_EQ(left.front().name(), "");
}

TEST_F(UnsavedListTest, ARunKeepsItsList) {
  AbandonList("A");
  RunFlags run;
  CommandList list(&run);
  run.ScriptRunning = 1;
  EXPECT_FALSE(AbandonedCopies(folder_).front().Restore(list));
  EXPECT_EQ(ListText(list), "");
}

TEST_F(UnsavedListTest, OnlyTheUserMayReadTheCopy) {
  AbandonList("A");
  struct stat about {};
  ASSERT_EQ(stat(Paths().front().c_str(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777u, 0700u);
}

TEST_F(UnsavedListTest, ARelativeNameIsKeptWithItsFolder) {
  list_.ShowFile("a.CMD", {"A"}, 0);
  list_.SetText(1, "B");
  EXPECT_EQ(UnsavedCopy(folder_).Update(list_), 0);
  EXPECT_EQ(AbandonedCopies(folder_).front().name(), fs::absolute("a.CMD").string());
}

TEST_F(UnsavedListTest, ANameThatTheCopyCannotHoldIsLeftOut) {
  for (const char* name : {"/x/a\nb.CMD", "/x/M\xFCller.CMD"}) {
    list_.ShowFile(name, {"A"}, 0);
    list_.SetText(1, "B");
    EXPECT_EQ(UnsavedCopy(folder_).Update(list_), 0);
    EXPECT_EQ(Offered(), Names{" >B"});
    for (const AbandonedCopy& copy : AbandonedCopies(folder_)) copy.Remove();
  }
}

TEST_F(UnsavedListTest, WhatIsNotACopyIsSkipped) {
  fs::create_directories(folder_ + "/list-empty");
  fs::create_directories(folder_ + "/list-binary");
  fs::create_directories(folder_ + "/list-nameless");
  fs::create_directories(folder_ + "/foreign");
  base::WriteBytes(folder_ + "/list-file", "\nA\n");
  base::WriteBytes(folder_ + "/list-binary/list", "\n\xFF\n");
  base::WriteBytes(folder_ + "/list-nameless/list", "/x/a.CMD\n");
  EXPECT_EQ(Offered(), Names{});
  EXPECT_EQ(Folders(), 2u) << "a file, and a folder that is not a copy";
}

TEST_F(UnsavedListTest, ALongFileFillsTheRowsOfTheList) {
  std::string bytes = "\n";
  for (int row = 1; row <= 1100; ++row) bytes += std::to_string(row) + "\r\n";
  fs::create_directories(folder_ + "/list-long");
  base::WriteBytes(folder_ + "/list-long/list", bytes);
  const std::vector<AbandonedCopy> left = AbandonedCopies(folder_);
  ASSERT_EQ(left.size(), 1u);
  EXPECT_TRUE(left.front().Restore(list_));
  EXPECT_EQ(list_.Text(1024), "1024");
}

TEST_F(UnsavedListTest, WithoutAFolderThereIsNoCopy) {
  list_.SetText(1, "A");
  EXPECT_EQ(UnsavedCopy("").Update(list_), 0);
  EXPECT_EQ(AbandonedCopies("").size(), 0u);
  EXPECT_EQ(UnsavedCopy("/proc/none").Update(list_), ENOENT);
  EXPECT_EQ(AbandonedCopies("/proc/none").size(), 0u);
}

TEST_F(UnsavedListTest, ARemovedFolderIsMadeAgain) {
  UnsavedCopy copy(folder_);
  list_.SetText(1, "A");
  EXPECT_EQ(copy.Update(list_), 0);
  fs::remove_all(folder_);
  list_.SetText(1, "B");
  EXPECT_EQ(copy.Update(list_), 0);
  EXPECT_EQ(Folders(), 1u);
}

}  // namespace
}  // namespace kolvane::script
