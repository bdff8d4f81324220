#include "component/ini_store.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/temp_folder.h"

namespace kolvane::component {
namespace {

class StateFileTest : public testing::Test {
 protected:
  std::string Bytes() const { return base::ReadBytes(path_); }

  base::TempFolder folder_;
  std::string path_ = folder_.Path("Kolvane/state.ini");
};

TEST_F(StateFileTest, AMissingFileIsEmptyAndNotCreated) {
  StateFile file(path_);
  EXPECT_EQ(file.Read("SIZES", "U_Port"), "");
  EXPECT_EQ(file.Save(), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("Kolvane")));
}

TEST_F(StateFileTest, WrittenValuesAreKept) {
  StateFile file(path_);
  file.Write("SIZES", "U_Port", "640,480");
  EXPECT_EQ(file.Read("SIZES", "U_Port"), "640,480");
  EXPECT_EQ(file.Save(), std::nullopt);
  EXPECT_EQ(Bytes(), "[SIZES]\nU_Port=\"640,480\"\n");
  EXPECT_EQ(StateFile(path_).Read("SIZES", "U_Port"), "640,480");
}

TEST_F(StateFileTest, TheSameValueAgainWritesNothing) {
  std::filesystem::create_directory(folder_.Path("Kolvane"));
  base::WriteBytes(path_, "[FOLDERS]\nLog = /tmp\n");
  const auto before = std::filesystem::last_write_time(path_);
  StateFile file(path_);
  file.Write("FOLDERS", "Log", "/tmp");
  EXPECT_EQ(file.Save(), std::nullopt);
  EXPECT_EQ(std::filesystem::last_write_time(path_), before);
  EXPECT_EQ(Bytes(), "[FOLDERS]\nLog = /tmp\n");
}

TEST_F(StateFileTest, WindowsOpenAtTheSameTimeKeepEachOthersValues) {
  StateFile first(path_);
  StateFile second(path_);
  first.Write("SIZES", "U_Port", "1,1");
  first.Write("FOLDERS", "Log", "/a");
  second.Write("FOLDERS", "Text", "/b");
  second.Write("FOLDERS", "Log", "/c");
  EXPECT_EQ(second.Save(), std::nullopt);
  EXPECT_EQ(first.Save(), std::nullopt);
  const StateFile after(path_);
  EXPECT_EQ(after.Read("SIZES", "U_Port"), "1,1");
  EXPECT_EQ(after.Read("FOLDERS", "Text"), "/b");
  EXPECT_EQ(after.Read("FOLDERS", "Log"), "/a") << "the later one's";
}

TEST_F(StateFileTest, ValuesOfOthersStay) {
  std::filesystem::create_directory(folder_.Path("Kolvane"));
  base::WriteBytes(path_, "; mine\n[RECENT]\n1=/a.CMD\n");
  StateFile file(path_);
  file.Write("FOLDERS", "Log", "/tmp");
  EXPECT_EQ(file.Save(), std::nullopt);
  EXPECT_EQ(Bytes(), "; mine\n[RECENT]\n1=/a.CMD\n\n[FOLDERS]\nLog=/tmp\n");
}

TEST_F(StateFileTest, AUserWithoutAFolderForItKeepsNothing) {
  StateFile file("");
  file.Write("FOLDERS", "Log", "/tmp");
  EXPECT_EQ(file.Read("FOLDERS", "Log"), "");
  EXPECT_EQ(file.Save(), std::nullopt);
}

TEST_F(StateFileTest, AFailureIsReported) {
  base::WriteBytes(folder_.Path("Kolvane"), "a file");
  StateFile file(path_);
  file.Write("FOLDERS", "Log", "/tmp");
  const auto failure = file.Save();
  ASSERT_TRUE(failure.has_value());
  EXPECT_EQ(failure->file, path_);
}

TEST_F(StateFileTest, IsInTheFolderForState) {
  setenv("XDG_STATE_HOME", "/somewhere", 1);
  EXPECT_EQ(UserStateFile(), "/somewhere/Kolvane/state.ini");
  unsetenv("XDG_STATE_HOME");
  setenv("HOME", "/home/me", 1);
  EXPECT_EQ(UserStateFile(), "/home/me/.local/state/Kolvane/state.ini");
}

}  // namespace
}  // namespace kolvane::component
