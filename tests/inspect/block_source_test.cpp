#include "inspect/block.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>
#include <filesystem>

#include "base/temp_folder.h"

namespace kolvane::inspect {
namespace {

TEST(BlockSource, TakesRegularFilesOnly) {
  const base::TempFolder folder;
  BlockSource source;
  source.SetBytes("before");
  EXPECT_EQ(source.Open(folder.path()), EISDIR);
  EXPECT_EQ(source.Open(folder.Path("none")), ENOENT);
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(source.Open(folder.Path("pipe")), EINVAL);
  EXPECT_EQ(source.Read(0, 10), "before") << "the old content stays";
  base::WriteBytes(folder.Path("file"), "0123456789");
  EXPECT_EQ(source.Open(folder.Path("file")), 0);
  EXPECT_EQ(source.size(), 10u);
  EXPECT_EQ(source.Read(8, 10), "89");
}

std::optional<std::uint64_t> Found(const std::string& text, const std::string& bytes, std::uint64_t from) {
  auto source = std::make_shared<BlockSource>();
  source->SetBytes(text);
  BlockSearch search(source, bytes, from);
  double share = 0;
  while (share < 1) {
    const double next = search.Step();
    EXPECT_GE(next, share);
    share = next;
  }
  return search.found();
}

TEST(BlockSearch, GoesFromAPositionOnAndThenFromTheStart) {
  EXPECT_EQ(Found("abcab", "ab", 0), 0u);
  EXPECT_EQ(Found("abcab", "ab", 1), 3u);
  EXPECT_EQ(Found("abcab", "ab", 4), 0u);
  EXPECT_EQ(Found("abcab", "ac", 0), std::nullopt);
  EXPECT_EQ(Found("", "a", 1), std::nullopt);
}

TEST(BlockSearch, FindsBytesFarFromTheStart) {
  for (std::size_t size = 1 << 10; size <= 4 << 20; size *= 2) {
    const std::string text = std::string(size - 1, '.') + "abc" + std::string(size, '.');
    EXPECT_EQ(Found(text, "abc", 0), size - 1);
    EXPECT_EQ(Found(text, "abc", 2 * size), size - 1) << "from the start again";
    EXPECT_EQ(Found(text, "abd", 0), std::nullopt);
  }
}

}  // namespace
}  // namespace kolvane::inspect
