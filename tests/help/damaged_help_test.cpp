#include <random>

#include "compiled_help.h"

namespace kolvane::help {
namespace {

// Asks for everything that the viewer may ask for. Every page that is named must exist.
void ReadEverything(std::string bytes) {
  const auto file = HelpFile::FromBytes(std::move(bytes));
  if (file == nullptr) return;
  for (const std::uint32_t topic : {1u, 10u, 11u, 300u, 400u}) {
    const std::string page = file->TopicPage(topic);
    EXPECT_TRUE(page.empty() || file->Has(page)) << page;
    file->Page(page);
  }
  for (const ContentsEntry& entry : file->contents()) file->Title(entry.page);
  file->Bytes("images/punkt.png");
  const std::string start = file->StartPage();
  EXPECT_TRUE(start.empty() || file->Has(start)) << start;
  for (const SearchHit& hit : file->Search("ausgabe")) EXPECT_TRUE(file->Has(hit.page)) << hit.page;
}

#ifdef KOLVANE_SANITIZED
constexpr int kRounds = 500;  // several times as slow
#else
constexpr int kRounds = 2000;
#endif

class DamagedHelp : public testing::Test {
 protected:
  const std::string whole_ = CompiledHelp();
};

TEST_F(DamagedHelp, CutAnywhereDoesNoHarm) {
  ASSERT_GT(whole_.size(), 1000u);
  for (std::size_t size = 0; size < whole_.size(); size += size < 600 ? 1 : 97)
    ReadEverything(whole_.substr(0, size));
}

TEST_F(DamagedHelp, CutInTheHeaderIsNotAHelpFile) {
  for (std::size_t size = 0; size < 0x60; ++size)
    EXPECT_EQ(HelpFile::FromBytes(whole_.substr(0, size)), nullptr);
}

TEST_F(DamagedHelp, AnyByteOfTheHeadersChangedDoesNoHarm) {
  for (std::size_t i = 0; i < 0x120; ++i) {
    for (const char value : {'\0', '\x01', '\x7F', '\x80', '\xFF'}) {
      std::string bytes = whole_;
      bytes[i] = value;
      ReadEverything(std::move(bytes));
    }
  }
}

TEST_F(DamagedHelp, BytesChangedAnywhereDoNoHarm) {
  std::mt19937 random(4711);
  for (int round = 0; round < kRounds; ++round) {
    std::string bytes = whole_;
    for (auto count = random() % 12 + 1; count > 0; --count)
      bytes[random() % bytes.size()] = static_cast<char>(random());
    ReadEverything(std::move(bytes));
  }
}

TEST_F(DamagedHelp, ObjectsWithoutAPathFromTheRootAreLeftOut) {
  std::string bytes = whole_;
  const std::size_t offset = bytes.find("/start.html");
  ASSERT_NE(offset, std::string::npos);
  bytes[offset] = 'x';
  const auto archive = ChmArchive::Open(bytes);
  ASSERT_NE(archive, nullptr);
  for (const std::string& path : archive->paths()) EXPECT_TRUE(path.starts_with('/'));
  const auto file = HelpFile::FromBytes(bytes);
  EXPECT_TRUE(file->StartPage().empty() || file->Has(file->StartPage()));
}

TEST_F(DamagedHelp, ReturnsAnEmptyPageIfThePagesCannotBeRead) {
  const auto file = HelpFile::FromBytes(HelpWithoutPages());
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->Has("start.html"));
  EXPECT_EQ(file->Page("start.html"), "");
  EXPECT_TRUE(file->Search("Ausgabe").empty());
}

TEST_F(DamagedHelp, PagesAreFoundWithoutContents) {
  std::string bytes = whole_;
  for (std::size_t at; (at = bytes.find("Terminal.hhc")) != bytes.npos;)
    bytes.replace(at, 12, "Terminal.hhx");
  const auto file = HelpFile::FromBytes(bytes);
  ASSERT_NE(file, nullptr);
  EXPECT_TRUE(file->contents().empty());
  const std::vector<SearchHit> hits = file->Search("Schnittstelle");
  ASSERT_EQ(hits.size(), 1u);
  EXPECT_EQ(hits.front().page, "verbindung.html");
}

}  // namespace
}  // namespace kolvane::help
