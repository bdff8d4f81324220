#include <gtest/gtest.h>

#include "help/contents.h"
#include "help/html.h"

namespace kolvane::help {
namespace {

using namespace std::string_literals;

std::string Pair(std::uint32_t number, std::uint32_t offset) {
  std::string bytes;
  for (const std::uint32_t value : {number, offset}) {
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> 8 * i & 0xFF);
  }
  return bytes;
}

TEST(TopicTable, ReadsPairsOfNumberAndPage) {
  const auto topics = ReadTopicTable("\x10\0\0\0"s + Pair(1, 1) + Pair(0x10203, 7), "\0a.htm\0/x/b.htm\0"s);
  EXPECT_EQ(topics.size(), 2u);
  EXPECT_EQ(topics.at(1), "a.htm");
  EXPECT_EQ(topics.at(0x10203), "/x/b.htm");
}

TEST(TopicTable, StripsTheAnchor) {
  EXPECT_EQ(ReadTopicTable("    " + Pair(1, 1), "\0a.htm#place\0"s).at(1), "a.htm");
  EXPECT_TRUE(ReadTopicTable("    " + Pair(1, 1), "\0#place\0"s).empty());
}

TEST(TopicTable, LeavesOutEntriesWithoutATarget) {
  const std::string strings = "\0a.htm\0unended"s;
  EXPECT_TRUE(
      ReadTopicTable("    " + Pair(1, 0) + Pair(2, 7) + Pair(3, 14) + Pair(4, 0xFFFFFFFF), strings).empty());
  EXPECT_TRUE(ReadTopicTable("    " + Pair(1, 1).substr(0, 7), strings).empty());
  EXPECT_TRUE(ReadTopicTable("", "").empty());
  EXPECT_TRUE(ReadTopicTable("12", strings).empty());
}

TEST(TopicTable, LeavesOutPathsOfMoreThan1024Bytes) {
  const std::string strings = '\0' + std::string(1025, 'a') + '\0';
  const auto topics = ReadTopicTable("    " + Pair(1, 1) + Pair(2, 2), strings);
  EXPECT_EQ(topics.size(), 1u);
  EXPECT_EQ(topics.at(2), std::string(1024, 'a'));
}

std::string Entry(const std::string& name, const std::string& page) {
  return "<li><object type=\"text/sitemap\"><param name=\"Name\" value=\"" + name +
         "\"><param name=\"Local\" value=\"" + page + "\"></object>";
}

TEST(Contents, ReadsEntriesWithTheirLevels) {
  const std::vector<ContentsEntry> expected = {{0, "A", "a.html"}, {1, "B & C", "b.html"}, {0, "D", ""}};
  EXPECT_EQ(ParseContents("<ul>" + Entry("A", "/a.html") + "<UL>" + Entry("B &amp; C", "b.html") + "</UL>" +
                          Entry("D", "") + "</ul>"),
            expected);
}

TEST(Contents, StripsTheAnchor) {
  const std::vector<ContentsEntry> expected = {{0, "A", "a.html", "place"}, {0, "B", "b.html", ""}};
  EXPECT_EQ(ParseContents("<ul>" + Entry("A", "a.html#place") + Entry("B", "b.html#")), expected);
}

TEST(Contents, LeavesOutEntriesWithoutATitleAndInvalidOnes) {
  EXPECT_EQ(
      ParseContents("<object><param name=ImageType value=Folder></object>" + Entry("", "x.html")).size(), 0u);
  EXPECT_EQ(ParseContents("<ul><li><object><param name=\"Name\" value=\"A\"").size(), 0u);
}

TEST(Contents, LimitsEachEntryToOneLevelBelowTheOneBefore) {
  const auto entries = ParseContents("<ul><ul><ul>" + Entry("A", "") + "<ul><ul>" + Entry("B", "") +
                                     "</ul></ul></ul></ul></ul></ul></ul>" + Entry("C", ""));
  ASSERT_EQ(entries.size(), 3u);
  EXPECT_EQ(entries[0].level, 0);
  EXPECT_EQ(entries[1].level, 1);
  EXPECT_EQ(entries[2].level, 0);
}

TEST(Contents, BoundsDepthAndNumber) {
  std::string html;
  for (int i = 0; i < 12'000; ++i) html += "<ul>" + Entry("A", "");
  const auto entries = ParseContents(html);
  EXPECT_EQ(entries.size(), 10'000u);
  EXPECT_EQ(entries.back().level, 15);
}

TEST(PageTextTest, HasTitleAndTextWithSpacesCollapsed) {
  const PageText page = ReadPageText(
      "<html><head><title> Der\n Titel</title><style>p { x }</style></head><body><h1>Eins</h1><p>zwei "
      "<b>dr</b>ei"
      "<br>vier<script>if (a < b) c</script></body>");
  EXPECT_EQ(page.title, "Der Titel");
  EXPECT_EQ(page.text, "Eins zwei drei vier");
}

TEST(PageTextTest, ATagEndsAfterItsQuotedValues) {
  EXPECT_EQ(ReadPageText("<body><a title=\"a>b\" name='c>\"d'>text</a></body>").text, "text");
}

TEST(PageTextTest, TakesAnyBytes) {
  EXPECT_EQ(ReadPageText("a < b <").text, "a < b <");
  EXPECT_EQ(ReadPageText("a < b > c <5> d").text, "a < b > c <5> d");
  EXPECT_EQ(ReadPageText("a<!DOCTYPE b>c<?d?>e</f>").text, "a c e");
  EXPECT_EQ(ReadPageText("<p title=\"never ended").text, "<p title=\"never ended");
  EXPECT_EQ(ReadPageText("a<!-- never ended").text, "a");
  EXPECT_EQ(ReadPageText("a<style>never ended").text, "a");
  EXPECT_EQ(ReadPageText("").text, "");
}

TEST(Entities, AreResolvedIfKnown) {
  EXPECT_EQ(ResolveEntities("&lt;&amp;&gt; &Auml;&#228;&#xE4;&#X20ac;"), "<&> Äää€");
  EXPECT_EQ(ResolveEntities("a & b &unknown; &#; &#xD800; &#1114112; &amp"),
            "a & b &unknown; &#; &#xD800; &#1114112; &amp");
}

TEST(AsUtf8Test, ReadsInvalidUtf8AsWindows1252) {
  EXPECT_EQ(AsUtf8("Ger\xE4t"), "Gerät");
  EXPECT_EQ(AsUtf8("Gerät"), "Gerät");
  EXPECT_EQ(AsUtf8("\xEF\xBB\xBFGerät"), "Gerät");
}

TEST(PageIndexTest, RanksTitlesThenKeyWordsThenTextsByNumberOfHits) {
  PageIndex index;
  index.Add({"A", "text"}, "wort");
  index.Add({"B", "twice"}, "wort und wort");
  index.Add({"C", "key"}, "anderes", "Wort");
  index.Add({"Wort", "title"}, "anderes");
  index.Add({"D", "also"}, "wort");
  std::string order;
  for (const SearchHit& hit : index.Find("WORT")) order += hit.page + " ";
  EXPECT_EQ(order, "title key twice text also ");
}

TEST(PageIndexTest, TakesUmlautsInBothSpellings) {
  PageIndex index;
  index.Add({"Größe", "a"}, "Überlauf, Maße");
  index.Add({"Groesse", "b"}, "Ueberlauf, Masse");
  for (const char* word : {"größe", "GROESSE", "überlauf", "ueberlauf", "maße", "MASSE"})
    EXPECT_EQ(index.Find(word).size(), 2u) << word;
}

TEST(PageTextTest, HasTheKeyWords) {
  const PageText page =
      ReadPageText("<head><META Name=\"Keywords\" content=\"Offset, Gr&ouml;&szlig;e\"></head>x");
  EXPECT_EQ(page.key_words, "Offset, Größe");
  EXPECT_EQ(page.text, "x");
  EXPECT_EQ(ReadPageText("<meta name=\"author\" content=\"x\">").key_words, "");
  EXPECT_EQ(ReadPageText("<meta name=keywords content=Offset>").key_words, "Offset");
}

TEST(AttributeTest, IsNotSearchedInOtherValues) {
  EXPECT_EQ(Attribute("title=\"a href=x b\" href='y z'", "href"), "y z");
  EXPECT_EQ(Attribute("title=href=x href=y", "href"), "y");
  EXPECT_EQ(Attribute("title=\"href=x", "href"), "") << "a value that never ends";
}

TEST(AttributeTest, FollowsAnyOtherValue) {
  for (const char* other : {"x=\"\" ", "x=\"1\" ", "x=\"1\"", "x='1'", "x=1 "})
    EXPECT_EQ(Attribute("a " + std::string(other) + "name=2", "name"), "2") << other;
}

TEST(PageIndexTest, LeavesOutPagesBeyondItsLimit) {
  PageIndex index;
  index.Add({"A", "a"}, std::string(PageIndex::kMaxText - 5, 'x'));
  index.Add({"B", "b"}, "sechs!");
  index.Add({"C", "c"}, "fünf");
  EXPECT_EQ(index.Find("sechs"), std::vector<SearchHit>{});
  EXPECT_EQ(index.Find("fünf"), (std::vector<SearchHit>{{"C", "c"}}));
}

TEST(PageIndexTest, PutsWordsThatStartSoBeforePartsOfWords) {
  PageIndex index;
  index.Add({"Was geschieht", "a"}, "Esc Esc Esc");
  index.Add({"Warten", "b"}, "", "abbrechen, Esc");
  index.Add({"Esc-Taste", "c"}, "");
  EXPECT_EQ(index.Find("esc"),
            (std::vector<SearchHit>{{"Esc-Taste", "c"}, {"Warten", "b"}, {"Was geschieht", "a"}}));
}

}  // namespace
}  // namespace kolvane::help
