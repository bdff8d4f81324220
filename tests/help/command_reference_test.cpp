#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "help/reference_paragraphs.h"
#include "help/rtf_reader.h"
#include "help_files.h"

namespace kolvane::help {
namespace {

constexpr std::uint32_t kBlue = 0xFF0000;
constexpr std::uint32_t kGreen = 0x008000;

class CommandReference : public testing::Test {
 protected:
  std::vector<RtfParagraph> ExampleRows() const {
    std::vector<RtfParagraph> rows;
    for (const auto& [text, example_row] : ReferenceParagraphs(bytes_)) {
      if (example_row) rows.push_back(text);
    }
    return rows;
  }

  static std::vector<std::string_view> AllCommands() {
    std::vector<std::string_view> all(kSpecialCommands.begin(), kSpecialCommands.end());
    all.insert(all.end(), kAddedCommands.begin(), kAddedCommands.end());
    return all;
  }

  static bool IsHeading(const RtfParagraph& paragraph) {
    return paragraph.runs.size() == 1 && paragraph.runs[0].format.bold;
  }

  static bool IsHeadingOf(const RtfParagraph& paragraph, std::string_view command) {
    return IsHeading(paragraph) && FirstWord(paragraph.runs[0].text) == command;
  }

  const std::string bytes_ = SourceOfHelp("TermCmdHelp.rtf");
  const RtfResult result_ = ReadRtf(bytes_);
  const RtfDocument& document_ = result_.document;
};

TEST_F(CommandReference, IsReadWithoutFaults) {
  EXPECT_EQ(result_.fault, RtfFault::kNone);
  EXPECT_GT(document_.paragraphs.size(), 200u);
  EXPECT_NE(document_.PlainText().find("Übersicht"), std::string::npos);
}

TEST_F(CommandReference, ExplainsEachCommandWithAnExample) {
  for (const std::string_view command : AllCommands()) {
    const auto heading = std::ranges::find_if(
        document_.paragraphs, [&](const RtfParagraph& paragraph) { return IsHeadingOf(paragraph, command); });
    ASSERT_NE(heading, document_.paragraphs.end()) << command;
    const auto next = std::find_if(heading + 1, document_.paragraphs.end(), IsHeading);
    ASSERT_GT(next - heading, 2) << command;
    EXPECT_FALSE((heading + 1)->runs.empty()) << command;
    EXPECT_TRUE(std::any_of(heading + 1, next, [&](const RtfParagraph& paragraph) {
      return paragraph.runs.size() == 1 && paragraph.runs[0].format.color == kBlue &&
             FirstWord(paragraph.runs[0].text) == command;
    })) << command;
  }
}

TEST_F(CommandReference, ExplainsOnlyCommands) {
  for (const RtfParagraph& paragraph : document_.paragraphs) {
    if (paragraph.runs.size() != 1 || !paragraph.runs[0].text.starts_with("$")) continue;
    EXPECT_EQ(std::ranges::count(AllCommands(), FirstWord(paragraph.runs[0].text)), 1)
        << paragraph.runs[0].text;
  }
}

TEST_F(CommandReference, ExampleRowsHaveTheGridsColours) {
  const std::vector<RtfParagraph> rows = ExampleRows();
  EXPECT_GT(rows.size(), 50u);
  for (const RtfParagraph& row : rows) {
    ASSERT_EQ(row.runs.size(), 1u);
    const auto& [format, text] = row.runs[0];
    if (text.starts_with("$")) {
      EXPECT_EQ(format.color, kBlue) << text;
    } else if (text.starts_with("'")) {
      EXPECT_EQ(format.color, kGreen) << text;
    } else {
      EXPECT_EQ(format.color, std::nullopt) << text;
    }
  }
}

// Both say the same, so a warning on a page must not be missing here.
TEST_F(CommandReference, HasTheWarningsOfThePages) {
  const std::string text = document_.PlainText();
  for (const char* warning : {"$IFERR trifft dort also auch ohne Fehler zu",
                              "Status der letzten Übertragung neu", "Wie $DELAY setzt der Befehl den Status"})
    EXPECT_NE(text.find(warning), std::string::npos) << warning;
}

TEST_F(CommandReference, NamesTheButtonsOfARunAsThePagesDo) {
  const std::string text = document_.PlainText();
  for (const char* name : {"Anhalten (F6)", "Beenden (Umschalt+F5)"})
    EXPECT_NE(text.find(name), std::string::npos) << name;
  for (const char* name : {"Unterbrechen", "Stopp "}) EXPECT_EQ(text.find(name), std::string::npos) << name;
}

// The log is written ("mitschreiben"); recorded ("aufzeichnen") are commands into the list, and measured
// values.
TEST_F(CommandReference, UsesOneWordForTheLog) {
  for (const RtfParagraph& paragraph : document_.paragraphs) {
    std::string text;
    for (const auto& [format, run] : paragraph.runs) text += run;
    if (text.find("Logdatei") == std::string::npos) continue;
    for (const char* word : {"aufzeichnen", "Aufzeichnung", "zeichnet"})
      EXPECT_EQ(text.find(word), std::string::npos) << text;
  }
}

TEST_F(CommandReference, QuotesEveryErrorExactly) {
  const std::string text = document_.PlainText();
  for (const char* error :
       {"Fehler in Befehlsliste (Zeile ", "\nUnbekannter $ Befehl\n", "\nSprungziel nicht gefunden\n",
        "\nLogdatei bereits geöffnet\n", "\nKeine Logdatei geöffnet\n", "\nUngültige Parameterposition\n",
        "\nIndex außerhalb des gültigen Bereichs\n", "\nÜberlauf\n"}) {
    EXPECT_NE(text.find(error), std::string::npos) << error;
  }
}

TEST_F(CommandReference, StaysReadableWhenCutAfterAnyLine) {
  const std::string whole = document_.PlainText();
  for (std::size_t end = bytes_.find('\n'); end + 1 < bytes_.size(); end = bytes_.find('\n', end + 1)) {
    const std::string text = ReadRtf(std::string_view(bytes_).substr(0, end)).document.PlainText();
    EXPECT_TRUE(whole.starts_with(text.substr(0, text.find_last_not_of('\n') + 1))) << end;
  }
}

// Any editor and any tool that compares versions can handle it.
TEST_F(CommandReference, SourceIsAsciiInShortLines) {
  std::size_t start = 0;
  for (std::size_t end = bytes_.find('\n'); end != std::string::npos; end = bytes_.find('\n', start)) {
    EXPECT_LE(end - start, 100u) << bytes_.substr(start, end - start);
    start = end + 1;
  }
  EXPECT_EQ(start, bytes_.size());
  EXPECT_TRUE(std::ranges::all_of(bytes_, [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); }));
}

}  // namespace
}  // namespace kolvane::help
