#include "help/help_file.h"

#include <filesystem>

#include "base/temp_folder.h"
#include "compiled_help.h"

namespace kolvane::help {
namespace {

using HelpFileTest = CompiledHelpFixture;

std::vector<std::string> Pages(const std::vector<SearchHit>& hits) {
  std::vector<std::string> pages;
  for (const SearchHit& hit : hits) pages.push_back(hit.page);
  return pages;
}

using Names = std::vector<std::string>;

TEST_F(HelpFileTest, FindsThePageOfATopicNumber) {
  EXPECT_EQ(file_->TopicPage(1), "start.html");
  EXPECT_EQ(file_->TopicPage(11), "ausgabe.html");
  EXPECT_EQ(file_->TopicPage(400), "befehl-loop.html");
}

TEST_F(HelpFileTest, HasNoPageForAnUnknownTopic) {
  EXPECT_EQ(file_->TopicPage(2), "");
  EXPECT_EQ(file_->TopicPage(0xFFFFFFFF), "");
}

TEST_F(HelpFileTest, StartsWithTopicOne) { EXPECT_EQ(file_->StartPage(), "start.html"); }

TEST_F(HelpFileTest, HasTheContentsInTheirOrderWithTheirLevels) {
  const std::vector<ContentsEntry> expected = {{0, "Überblick", "start.html"},
                                               {1, "Hauptfenster & Menüs", "hauptfenster.html"},
                                               {2, "Ausgabe \"TermWin\"", "ausgabe.html"},
                                               {0, "Verbindung", "verbindung.html"},
                                               {0, "$LOOP", "befehl-loop.html"}};
  EXPECT_EQ(file_->contents(), expected);
}

TEST_F(HelpFileTest, ReturnsPagesStyleSheetAndPicturesAsCompiled) {
  EXPECT_NE(file_->Page("start.html").find("<h1>Überblick</h1>"), std::string::npos);
  EXPECT_EQ(file_->Bytes("style.css"), "h1 { color: #003366; }\n");
  EXPECT_TRUE(file_->Bytes("images/punkt.png").starts_with("\x89PNG"));
}

TEST_F(HelpFileTest, MatchesPathsWithoutRegardToCase) {
  EXPECT_TRUE(file_->Has("START.HTML"));
  EXPECT_EQ(file_->Page("START.HTML"), file_->Page("start.html"));
}

TEST_F(HelpFileTest, ReturnsNothingForAMissingObject) {
  for (const char* path : {"", "nirgends.html", "../start.html", "images", "images/"})
    EXPECT_EQ(file_->Bytes(path), "") << path;
  EXPECT_FALSE(file_->Has(""));
}

TEST_F(HelpFileTest, TakesTitlesFromTheContents) {
  EXPECT_EQ(file_->Title("hauptfenster.html"), "Hauptfenster & Menüs");
  EXPECT_EQ(file_->Title("nirgends.html"), "nirgends.html");
}

TEST_F(HelpFileTest, SearchesTextWithoutRegardToCaseUmlautsIncluded) {
  EXPECT_EQ(Pages(file_->Search("SCHNITTSTELLE")), Names{"verbindung.html"});
  EXPECT_EQ(Pages(file_->Search("gröSSe")), Names{"start.html"});
  EXPECT_EQ(Pages(file_->Search("Groesse")), Names{"start.html"});
  EXPECT_EQ(Pages(file_->Search("GRÖßE")), Names{"start.html"});
  EXPECT_EQ(Pages(file_->Search("ÜBER")), (Names{"start.html", "hauptfenster.html"}));
}

TEST_F(HelpFileTest, SearchPutsTitlesBeforeTexts) {
  EXPECT_EQ(Pages(file_->Search("ausgabe")), (Names{"ausgabe.html", "hauptfenster.html"}));
}

TEST_F(HelpFileTest, SearchNeedsEveryWord) {
  EXPECT_EQ(Pages(file_->Search("  ausgabe   rot ")), Names{"ausgabe.html"});
  EXPECT_EQ(Pages(file_->Search("ausgabe nirgendwo")), Names{});
}

TEST_F(HelpFileTest, SearchFindsOnlyTextAndNothingWithoutWords) {
  EXPECT_EQ(file_->Search("stylesheet"), std::vector<SearchHit>{});
  EXPECT_EQ(file_->Search("Versteckt"), std::vector<SearchHit>{});
  EXPECT_EQ(file_->Search("   "), std::vector<SearchHit>{});
}

TEST_F(HelpFileTest, SearchResolvesEntities) {
  EXPECT_EQ(Pages(file_->Search("ähnlich über €")), Names{"hauptfenster.html"});
}

/// The tests' help file with other bytes from `offset` after the start of a name in its directory; null if it
/// has no such name.
std::unique_ptr<HelpFile> HelpWithBytes(std::string_view name, std::size_t offset, std::string_view bytes) {
  std::string file = CompiledHelp();
  const std::size_t start = file.find(name);
  if (start == std::string::npos) return nullptr;
  file.replace(start + offset, bytes.size(), bytes);
  return HelpFile::FromBytes(std::move(file));
}

TEST(HelpFileSearch, FindsAPageOnceIfTheContentsSpellItsNameDifferently) {
  const auto file = HelpWithBytes("/start.html", 1, "S");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(Pages(file->Search("GRÖßE")), Names{"start.html"});
}

TEST(HelpFileSearch, SkipsAPageThatCannotBeRead) {
  // A name is followed by its section (1 byte), its position and its length (2 bytes each, 7 bits in each).
  constexpr std::string_view kName = "/start.html";
  const auto file = HelpWithBytes(kName, kName.size() + 3, {"\x80\0", 2});
  ASSERT_NE(file, nullptr);
  ASSERT_EQ(file->Page("start.html"), "");
  EXPECT_EQ(Pages(file->Search("ähnlich über €")), Names{"hauptfenster.html"});
}

TEST(HelpFileOpen, IsNullForOtherFiles) {
  const base::TempFolder folder;
  const std::string path = folder.Path("Terminal.chm");
  EXPECT_EQ(HelpFile::Open(path), nullptr);
  EXPECT_EQ(HelpFile::Open(folder.Path("")), nullptr);
  EXPECT_EQ(HelpFile::Open(""), nullptr);
  std::ofstream(path) << "";
  EXPECT_EQ(HelpFile::Open(path), nullptr);
  std::ofstream(path) << "ITSF";
  EXPECT_EQ(HelpFile::Open(path), nullptr);
}

TEST(HelpFileOpen, LeavesNoPathOfTheBuildInTheFile) {
  const auto archive = ChmArchive::Open(CompiledHelp());
  ASSERT_NE(archive, nullptr);
  for (const std::string& path : archive->paths())
    EXPECT_EQ(archive->Read(path).find(KOLVANE_BUILD_FOLDER), std::string::npos) << path;
}

TEST(HelpFileWithoutTopics, StartsWithTheFirstPageOfItsContents) {
  // The name of the object with the topics.
  const auto file = HelpWithBytes("/#IVB", 2, "X");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->TopicPage(1), "");
  EXPECT_EQ(file->StartPage(), "start.html");
}

TEST(HelpFileCache, ReadsAFileAgainOnlyAfterAChange) {
  const base::TempFolder folder;
  const std::string path = folder.Path("a.chm");
  base::WriteBytes(path, CompiledHelp());
  HelpFileCache cache;
  const auto first = cache.Get(path);
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(cache.Get(path), first);
  std::filesystem::last_write_time(path, std::filesystem::last_write_time(path) + std::chrono::seconds(2));
  EXPECT_NE(cache.Get(path), first);
}

}  // namespace
}  // namespace kolvane::help
