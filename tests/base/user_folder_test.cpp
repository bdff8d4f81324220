#include "base/system.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace kolvane::base {
namespace {

std::filesystem::path Folder() { return UserFolder("KOLVANE_TEST_HOME", ".some/folder"); }

class UserFolderTest : public testing::Test {
 protected:
  UserFolderTest() {
    if (const char* home = std::getenv("HOME")) home_ = home;
    setenv("HOME", "/home/anna", 1);
    unsetenv("KOLVANE_TEST_HOME");
  }
  ~UserFolderTest() override {
    unsetenv("KOLVANE_TEST_HOME");
    setenv("HOME", home_.c_str(), 1);
  }

  std::string home_;
};

TEST_F(UserFolderTest, IsInTheNamedFolderElseInTheHome) {
  EXPECT_EQ(Folder(), "/home/anna/.some/folder/Kolvane");
  setenv("KOLVANE_TEST_HOME", "/data", 1);
  EXPECT_EQ(Folder(), "/data/Kolvane");
}

TEST_F(UserFolderTest, IsNeverRelative) {
  setenv("KOLVANE_TEST_HOME", "data", 1);
  EXPECT_EQ(Folder(), "/home/anna/.some/folder/Kolvane");
  setenv("HOME", "anna", 1);
  EXPECT_EQ(Folder(), "");
  unsetenv("HOME");
  EXPECT_EQ(Folder(), "");
}

}  // namespace
}  // namespace kolvane::base
