#include "inspect/template_file.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "base/temp_folder.h"

namespace kolvane::inspect {
namespace {

using Names = std::vector<std::string>;

class TemplateListTest : public testing::Test {
 protected:
  static void Fill(const base::TempFolder& folder, const Names& files) {
    for (const std::string& file : files) base::WriteBytes(folder.Path(file), "");
  }

  Names Listed() const {
    Names names;
    for (const TemplateFile& file : ListTemplates(user_.path(), component_.path()))
      names.push_back(file.name);
    return names;
  }
  Names ListedFrom(const Names& files) const {
    Fill(component_, files);
    return Listed();
  }

  base::TempFolder user_;
  base::TempFolder component_;
};

TEST_F(TemplateListTest, AnythingMayFollowTheEnding) {
  EXPECT_EQ(ListedFrom({"a.BNS", "b.BNS2", "c.BNS.txt", "d.BN", "e.TXT", "fBNS"}),
            (Names{"a.BNS", "b.BNS2", "c.BNS.txt"}));
}

TEST_F(TemplateListTest, CaseDoesNotMatterAndDoesNotAffectTheOrder) {
  EXPECT_EQ(ListedFrom({"b.bns", "A.Bns", "a.BNS", "C.BNS"}), (Names{"A.Bns", "a.BNS", "b.bns", "C.BNS"}));
}

TEST_F(TemplateListTest, FoldersAreLeftOut) {
  std::filesystem::create_directory(component_.Path("a.BNS"));
  EXPECT_EQ(ListedFrom({"b.BNS"}), Names{"b.BNS"});
}

TEST_F(TemplateListTest, AMissingFolderHasNoTemplates) {
  EXPECT_TRUE(ListTemplates("/nonexistent/folder", "/nonexistent/other").empty());
  EXPECT_TRUE(ListTemplates("", "").empty());
  EXPECT_TRUE(ListedFrom({"readme.txt"}).empty());
}

TEST_F(TemplateListTest, TheUsersOwnComeFirst) {
  Fill(user_, {"z.BNS", "y.bns"});
  EXPECT_EQ(ListedFrom({"a.BNS", "b.BNS"}), (Names{"y.bns", "z.BNS", "a.BNS", "b.BNS"}));
  const auto files = ListTemplates(user_.path(), component_.path());
  EXPECT_EQ(files.front().path, user_.Path("y.bns"));
  EXPECT_EQ(files.back().path, component_.Path("b.BNS"));
}

TEST_F(TemplateListTest, SuppliedTemplatesComeLast) {
  EXPECT_EQ(ListedFrom({"KVA-1-KOPF.BNS", "kva-2-int16.bns", "Z.BNS"}),
            (Names{"Z.BNS", "KVA-1-KOPF.BNS", "kva-2-int16.bns"}));
}

TEST_F(TemplateListTest, TheUsersOwnReplacesAnotherOfItsName) {
  Fill(user_, {"kva-1-kopf.bns"});
  EXPECT_EQ(ListedFrom({"KVA-1-KOPF.BNS", "A.BNS"}), (Names{"kva-1-kopf.bns", "A.BNS"}));
  const auto same = ListTemplates(component_.path(), component_.path());
  EXPECT_EQ(same.size(), 2u);
}

TEST_F(TemplateListTest, KnowsWhichAreSupplied) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(KOLVANE_SUPPLIED_TEMPLATES)) {
    EXPECT_TRUE(IsSupplied(entry.path().filename().string())) << entry;
    ++count;
  }
  EXPECT_EQ(count, 3);
  EXPECT_FALSE(IsSupplied("A.BNS"));
}

}  // namespace
}  // namespace kolvane::inspect
