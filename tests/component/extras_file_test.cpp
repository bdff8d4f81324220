#include "component/settings.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/temp_folder.h"

namespace kolvane::component {
namespace {

class ExtrasFileTest : public testing::Test {
 protected:
  base::TempFolder folder_;
  std::string path_ = folder_.Path("Kolvane/Extras.ini");
};

TEST_F(ExtrasFileTest, WithoutAFileEveryFlagHasItsDefault) {
  ExtrasFile file(path_);
  const terminal::Extras extras = file.Load();
  EXPECT_TRUE(extras.device_words);
  EXPECT_FALSE(extras.queries_only || extras.listen || extras.blocks || extras.reconnect ||
               extras.time_stamps || extras.log_time_stamps || extras.utf8);
}

TEST_F(ExtrasFileTest, IsOnlyCreatedOnceSomethingIsChanged) {
  ExtrasFile file(path_);
  terminal::Extras extras = file.Load();
  EXPECT_EQ(file.Save(extras), std::nullopt);
  EXPECT_FALSE(std::filesystem::exists(folder_.Path("Kolvane")));
  extras.queries_only = true;
  EXPECT_EQ(file.Save(extras), std::nullopt);
  EXPECT_EQ(base::ReadBytes(path_), "[EXTRAS]\nQueriesOnly=1\n");
}

TEST_F(ExtrasFileTest, EachFlagIsKept) {
  for (const terminal::ExtrasFlag& flag : terminal::kExtrasFlags) {
    ExtrasFile file(path_);
    terminal::Extras extras = file.Load();
    const bool value = extras.*flag.value = !(extras.*flag.value);
    ASSERT_EQ(file.Save(extras), std::nullopt);
    EXPECT_EQ(ExtrasFile(path_).Load().*flag.value, value) << flag.name;
  }
}

TEST_F(ExtrasFileTest, AValueThatIsNeitherOnNorOffMeansTheDefault) {
  std::filesystem::create_directory(folder_.Path("Kolvane"));
  base::WriteBytes(path_, "[EXTRAS]\nQueriesOnly=ja\nDeviceWords=\nBlocks=1\n");
  const terminal::Extras extras = ExtrasFile(path_).Load();
  EXPECT_FALSE(extras.queries_only);
  EXPECT_TRUE(extras.device_words);
  EXPECT_TRUE(extras.blocks);
}

}  // namespace
}  // namespace kolvane::component
