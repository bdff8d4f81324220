#include <gtest/gtest.h>

#include "base/encoding.h"
#include "base/pattern.h"
#include "help/help_files.h"
#include "help/help_pages.h"

namespace kolvane::help {
namespace {

const HelpPages& Pages() {
  static const HelpPages pages(KOLVANE_HELP_FOLDER);
  return pages;
}

TEST(HelpTopics, EachHasItsOwnNumberPageAndTitle) {
  std::set<int> numbers;
  std::set<std::string> pages;
  std::set<std::string> titles;
  for (const TopicLine& topic : Pages().Topics()) {
    ASSERT_NE(topic.number, 0) << "not a topic: " << topic.title;
    EXPECT_TRUE(numbers.insert(topic.number).second) << topic.number;
    EXPECT_TRUE(pages.insert(topic.page).second) << topic.page;
    EXPECT_TRUE(titles.insert(topic.title).second) << topic.title;
  }
}

TEST(HelpTopics, TheFirstIsTheStartPage) {
  EXPECT_EQ(Pages().Topics().front().number, 1);
  EXPECT_EQ(Pages().Topics().front().page, "start.html");
}

TEST(HelpTopics, EachLevelIsAtMostOneBelowTheOneBefore) {
  int before = 0;
  for (const TopicLine& topic : Pages().Topics()) {
    EXPECT_LE(topic.level, before + 1) << topic.page;
    before = topic.level;
  }
}

TEST(HelpTopics, EachHasOnePageAndEachPageIsATopic) {
  std::set<std::string> listed;
  for (const TopicLine& topic : Pages().Topics()) {
    EXPECT_TRUE(Pages().pages().contains(topic.page)) << topic.page;
    listed.insert(topic.page);
  }
  for (const auto& [page, html] : Pages().pages()) EXPECT_TRUE(listed.contains(page)) << page;
}

TEST(HelpTopics, TitlesAreThoseOfThePages) {
  for (const TopicLine& topic : Pages().Topics()) {
    const std::string& html = Pages().pages().at(topic.page);
    EXPECT_EQ(HelpPages::Matches(html, "<title>(.*)</title>"), std::vector{topic.title}) << topic.page;
    EXPECT_EQ(HelpPages::Matches(html, "<h1>(?:<a name=\"[^\"]*\"></a>)*(.*)</h1>"), std::vector{topic.title})
        << topic.page;
  }
}

TEST(HelpTopics, EverySpecialCommandHasATopic) {
  const std::vector<TopicLine> topics = Pages().Topics();
  for (const std::string_view command : kSpecialCommands) {
    const auto describes_command = [command](const TopicLine& topic) {
      return FirstWord(topic.title) == command;
    };
    EXPECT_EQ(std::ranges::count_if(topics, describes_command), 1) << command;
  }
}

TEST(HelpPages, EachHasKeyWords) {
  for (const auto& [page, html] : Pages().pages())
    EXPECT_EQ(HelpPages::Matches(html, "\n<meta name=\"keywords\" content=\"([^\"]+)\">\n").size(), 1u)
        << page;
}

TEST(HelpPages, LinksLeadToPagesAndAnchorsThatExist) {
  for (const auto& [page, html] : Pages().pages()) {
    for (const std::string& link : HelpPages::Values(html, "href")) {
      if (link == "style.css") continue;
      const std::string target = link.substr(0, link.find('#'));
      const auto found = Pages().pages().find(target.empty() ? page : target);
      ASSERT_NE(found, Pages().pages().end()) << page << ": " << link;
      const std::string anchor = link.substr(std::min(target.size() + 1, link.size()));
      EXPECT_TRUE(anchor.empty() || HelpPages::HasAnchor(found->second, anchor)) << page << ": " << link;
    }
  }
}

TEST(HelpPages, TheTemplateOfTheExampleIsTheSuppliedOne) {
  std::string fields = base::FromWindows1252(SourceOfHelp("templates/KVA-1-KOPF.BNS"));
  std::erase(fields, '\r');
  fields.erase(0, fields.find("BYTECOUNT="));
  ASSERT_NE(fields, "");
  EXPECT_NE(SourceOfHelp("pages/vorlage-beispiel.html")
                .find("<pre class=\"vorlage\">" + fields.substr(0, fields.size() - 1) + "</pre>"),
            std::string::npos);
}

TEST(HelpPages, PicturesExistAndAreDescribed) {
  for (const auto& [page, html] : Pages().pages()) {
    const std::vector<std::string> pictures = HelpPages::Values(html, "src");
    EXPECT_EQ(HelpPages::Values(html, "alt").size(), pictures.size()) << page;
    for (const std::string& picture : pictures)
      EXPECT_TRUE(std::filesystem::is_regular_file(Pages().folder() / picture)) << page << ": " << picture;
  }
}

TEST(HelpPages, EachPictureIsShown) {
  std::set<std::string> shown;
  for (const auto& [page, html] : Pages().pages()) {
    for (const std::string& picture : HelpPages::Values(html, "src")) shown.insert(picture);
  }
  for (const auto& file : std::filesystem::directory_iterator(Pages().folder() / "images")) {
    const std::string picture = "images/" + file.path().filename().string();
    EXPECT_TRUE(shown.contains(picture)) << picture;
  }
}

// F1 scrolls to the anchor of a control, so what is above it is out of sight.
TEST(HelpPages, AnchorsOfAWholePageAreInItsHeading) {
  for (const auto& [name, html] : Pages().pages())
    EXPECT_EQ(html.find("</h1>\n<p><a name="), std::string::npos) << name;
}

TEST(HelpPages, AnchorsOfAPageDiffer) {
  for (const auto& [page, html] : Pages().pages()) {
    std::set<std::string> names;
    for (const std::string& name : HelpPages::Values(html.substr(html.find("<body>")), "name"))
      EXPECT_TRUE(names.insert(name).second) << page << ": " << name;
  }
}

// "" if each tag is known and closed in its order, otherwise the first that is not.
std::string FirstWrongTag(const std::string& html) {
  static const std::set<std::string> empty = {"meta", "link", "img", "br"};
  static const std::set<std::string> known = {"html",  "head", "title", "body", "h1", "h2", "p",
                                              "table", "tr",   "th",    "td",   "ul", "ol", "li",
                                              "pre",   "code", "b",     "i",    "a"};
  std::vector<std::string> open;
  for (const std::string& tag : HelpPages::Matches(html, "<(/?[a-z0-9]+)[^<>]*>")) {
    if (empty.contains(tag)) continue;
    if (known.contains(tag)) {
      open.push_back(tag);
    } else if (open.empty() || tag != "/" + open.back()) {
      return tag;
    } else {
      open.pop_back();
    }
  }
  return open.empty() ? "" : open.back();
}

TEST(HelpPages, TagsAreKnownAndBalanced) {
  for (const auto& [page, html] : Pages().pages()) EXPECT_EQ(FirstWrongTag(html), "") << page;
}

TEST(HelpPages, AngleBracketsAndAmpersandsOfTheTextAreEntities) {
  const base::Pattern tag("<!DOCTYPE[^<>]*>|</?[a-z][^<>]*>");
  const base::Pattern entity("&(amp|lt|gt);");
  for (const auto& [page, html] : Pages().pages()) {
    const std::string text = entity.Replaced(tag.Replaced(html, ""), "");
    EXPECT_EQ(text.find_first_of("<>&"), std::string::npos) << page;
  }
}

// Titles become entries of the contents, which other viewers read as Windows-1252.
TEST(HelpPages, AreUtf8WithCharactersOfTheCodePageOnly) {
  for (const auto& [page, html] : Pages().pages()) {
    EXPECT_EQ(base::FromWindows1252(base::ToWindows1252(html)), html) << page;
    EXPECT_NE(html.find("charset=utf-8"), std::string::npos) << page;
  }
}

TEST(HelpPages, ContainNothingUnfinished) {
  for (const auto& [page, html] : Pages().pages()) {
    for (const char* word : {"TODO", "FIXME", "XXX", "**", "[[", "{{", "``", "{#"})
      EXPECT_EQ(html.find(word), std::string::npos) << page << ": " << word;
  }
}

}  // namespace
}  // namespace kolvane::help
