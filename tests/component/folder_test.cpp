#include "component/folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace kolvane::component {
namespace {

TEST(Folder, IsTheChosenThenTheEnvironmentsThenItsOwn) {
  unsetenv("KOLVANE_FOLDER");
  EXPECT_EQ(ComponentFolder(""), OwnFolder());
  setenv("KOLVANE_FOLDER", "/srv/kolvane/", 1);
  EXPECT_EQ(ComponentFolder(""), "/srv/kolvane");
  EXPECT_EQ(ComponentFolder("/opt/a//"), "/opt/a");
  EXPECT_EQ(ComponentFolder("/"), "/");
  unsetenv("KOLVANE_FOLDER");
}

TEST(Folder, OwnFolderContainsTheProgramOfThisCode) {
  EXPECT_EQ(OwnFolder(), std::filesystem::read_symlink("/proc/self/exe").parent_path().string());
}

}  // namespace
}  // namespace kolvane::component
