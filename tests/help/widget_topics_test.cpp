#include "help/widget_topics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "help/help_file.h"

namespace kolvane::help {
namespace {

// Number to page, from help/topics.txt.
std::map<std::uint32_t, std::string> ListedTopics() {
  std::map<std::uint32_t, std::string> topics;
  std::ifstream file(KOLVANE_HELP_FOLDER "/topics.txt");
  for (std::string line; std::getline(file, line);) {
    std::istringstream fields(line);
    std::string number, level, page;
    if (line.starts_with('#') || !std::getline(fields, number, '\t')) continue;
    std::getline(fields, level, '\t');
    std::getline(fields, page, '\t');
    topics.emplace(static_cast<std::uint32_t>(std::stoul(number)), page);
  }
  return topics;
}

TEST(WidgetTopics, AreAllListed) {
  const auto topics = ListedTopics();
  for (const std::uint32_t topic : AllWidgetTopics()) EXPECT_TRUE(topics.contains(topic)) << topic;
  EXPECT_TRUE(topics.contains(kStartTopic));
}

TEST(WidgetTopics, HavePagesInTheCompiledFile) {
  const auto file = HelpFile::Open(KOLVANE_COMPILED_HELP);
  ASSERT_NE(file, nullptr);
  const auto topics = ListedTopics();
  ASSERT_FALSE(topics.empty());
  for (const auto& [topic, page] : topics) {
    EXPECT_EQ(file->TopicPage(topic), page);
    EXPECT_FALSE(file->Page(page).empty()) << page;
  }
  EXPECT_EQ(file->contents().size(), topics.size());
}

TEST(WidgetTopics, StandForMembersOfAControlArray) {
  EXPECT_EQ(WidgetTopic("Port_0"), 310u);
  EXPECT_EQ(WidgetTopic("Port_9"), 316u);
  EXPECT_EQ(WidgetTopic("optFormat_4"), WidgetTopic("optFormat_0"));
  EXPECT_EQ(WidgetTopic("ExtPar_12"), WidgetTopic("ExtPar_0"));
}

TEST(WidgetTopics, AreMissingForNamesThatNoWindowHas) {
  for (const char* name :
       {"", "_1", "nirgends", "nirgends_1", "optFormat_", "optFormat_x", "qt_spinbox_lineedit"})
    EXPECT_EQ(WidgetTopic(name), std::nullopt) << name;
}

TEST(WidgetTopics, TakeTheInnermostNameThatHasOne) {
  const auto place = [](std::vector<std::string> names) { return PlaceOfNames(names); };
  EXPECT_EQ(place({}), (HelpPlace{kStartTopic, ""}));
  EXPECT_EQ(place({"", "x"}), (HelpPlace{kStartTopic, ""}));
  EXPECT_EQ(place({"", "x", "Baud", "U_Port"}), (HelpPlace{301, "Baud"}));
  EXPECT_EQ(place({"optFormat_3", "Frame1"}), (HelpPlace{502, "optFormat_3"}));
  EXPECT_EQ(place({"optFormat_5", "Frame1"}), (HelpPlace{505, "optFormat_5"}));
}

// The words by which somebody looks who does not know the page's own.
TEST(HelpSearch, FindsWhatIsCalledOtherwiseHere) {
  const auto file = HelpFile::Open(KOLVANE_COMPILED_HELP);
  ASSERT_NE(file, nullptr);
  const std::pair<const char*, const char*> words[] = {{"Offset", "hexdump.html"},
                                                       {"Endian", "byte-reihenfolge.html"},
                                                       {"Skript", "befehlsliste-grundlagen.html"},
                                                       {"Makro", "befehlsliste-grundlagen.html"},
                                                       {"Label", "befehl-goto.html"},
                                                       {"Zeitstempel", "option-antwortzeiten.html"},
                                                       {"Ueberlauf", "meldungen-eingaben.html"},
                                                       {"groesser", "befehl-ifgreater.html"},
                                                       {"schleife", "befehl-repeat.html"},
                                                       {"baudrate", "seite-rs232.html"}};
  constexpr std::size_t kInSight = 4;
  for (const auto& [word, page] : words) {
    std::vector<SearchHit> hits = file->Search(word);
    hits.resize(std::min(hits.size(), kInSight));
    EXPECT_TRUE(std::ranges::any_of(hits, [page](const SearchHit& hit) { return hit.page == page; }))
        << word << ": " << (hits.empty() ? "nothing" : hits.front().page);
  }
}

}  // namespace
}  // namespace kolvane::help
