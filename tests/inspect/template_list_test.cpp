#include "inspect/template_list.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/temp_folder.h"

namespace kolvane::inspect {
namespace {

std::vector<std::string> NamesAmong(const std::vector<std::string>& files) {
  const base::TempFolder folder;
  for (const std::string& file : files) base::WriteBytes(folder.Path(file), "");
  return ListTemplates(folder.Path(""));
}

TEST(TemplateListTest, AnythingMayFollowTheEnding) {
  EXPECT_EQ(NamesAmong({"a.BNS", "b.BNS2", "c.BNS.txt", "d.BN", "e.TXT", "fBNS"}),
            (std::vector<std::string>{"a.BNS", "b.BNS2", "c.BNS.txt"}));
}

TEST(TemplateListTest, LetterCaseDoesNotMatterAndOrdersNothing) {
  EXPECT_EQ(NamesAmong({"b.bns", "A.Bns", "a.BNS", "C.BNS"}),
            (std::vector<std::string>{"A.Bns", "a.BNS", "b.bns", "C.BNS"}));
}

TEST(TemplateListTest, FoldersAreLeftOut) {
  const base::TempFolder folder;
  std::filesystem::create_directory(folder.Path("a.BNS"));
  base::WriteBytes(folder.Path("b.BNS"), "");
  EXPECT_EQ(ListTemplates(folder.Path("")), std::vector<std::string>{"b.BNS"});
}

TEST(TemplateListTest, AFolderThatIsNotThereHasNone) {
  EXPECT_TRUE(ListTemplates("/nonexistent/folder").empty());
  EXPECT_TRUE(ListTemplates("").empty());
  EXPECT_TRUE(NamesAmong({"readme.txt"}).empty());
}

}  // namespace
}  // namespace kolvane::inspect
