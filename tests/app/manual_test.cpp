#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <variant>

#include "amplifier/options.h"
#include "app/options.h"
#include "app/parse.h"

namespace kolvane::app {
namespace {

// The source of a manual page with its escaped hyphens as plain ones.
std::string Manual(const std::string& name) {
  std::ifstream file(KOLVANE_MANUALS "/" + name, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  std::erase(text, '\\');
  return text;
}

// Every long option that a text names.
std::set<std::string> OptionsIn(const std::string& text) {
  constexpr char kLetters[] = "abcdefghijklmnopqrstuvwxyz-";
  std::set<std::string> options;
  for (std::size_t at = text.find("--"); at != std::string::npos; at = text.find("--", at + 2)) {
    const std::size_t end = std::min(text.find_first_not_of(kLetters, at), text.size());
    if (end > at + 2) options.insert(text.substr(at, end - at));
    at = end - 2;
  }
  return options;
}

TEST(Manual, HasExactlyTheOptionsOfTheHelp) {
  const auto options = OptionsIn(HelpText());
  ASSERT_TRUE(options.contains("--receive-terminator"));
  EXPECT_EQ(OptionsIn(Manual("kolvane.1")), options);
}

TEST(Manual, OfTheAmplifierHasTheOptionsOfItsHelp) {
  std::string program = "kolvane-amplifier", option = "--help";
  char* const words[] = {program.data(), option.data(), nullptr};
  const auto help = amplifier::ParseOptions(2, words);
  ASSERT_TRUE(std::holds_alternative<amplifier::Information>(help));
  auto options = OptionsIn(std::get<amplifier::Information>(help).text);
  ASSERT_TRUE(options.contains("--close-mid-answer"));
  options.insert("--connect");  // an option of kolvane, in the example
  EXPECT_EQ(OptionsIn(Manual("kolvane-amplifier.1")), options);
}

// The words of a call as a shell would split it, without the program's name.
std::vector<std::string> WordsOf(const std::string& call) {
  std::vector<std::string> words = {""};
  bool quoted = false;
  for (const char c : call) {
    if (c == '\'') {
      quoted = !quoted;
    } else if (quoted || (c != ' ' && c != '\n' && c != '\\')) {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  std::erase_if(words, [](const std::string& word) { return word.empty() || word.starts_with("&gt;"); });
  words.erase(words.begin());
  return words;
}

TEST(HelpPages, TheCallsThatTheyShowAreValid) {
  int calls = 0;
  for (const auto& entry : std::filesystem::directory_iterator(KOLVANE_HELP_FOLDER "/pages")) {
    if (entry.path().extension() != ".html") continue;
    std::ifstream file(entry.path());
    const std::string html{std::istreambuf_iterator<char>(file), {}};
    constexpr std::string_view kBegin = "<pre class=\"aufruf\">";
    for (std::size_t at = html.find(kBegin); at != std::string::npos; at = html.find(kBegin, at + 1)) {
      const std::size_t start = at + kBegin.size();
      EXPECT_EQ(Parse(WordsOf(html.substr(start, html.find("</pre>", start) - start))).error, "") << entry;
      ++calls;
    }
  }
  EXPECT_EQ(calls, 5);
}

TEST(Manual, HasEveryCommandOfTheHelp) {
  const std::string manual = Manual("kolvane.1");
  for (const char* command : {"kolvane run", "kolvane send"}) {
    EXPECT_NE(HelpText().find(command), std::string::npos);
    EXPECT_NE(manual.find(command), std::string::npos) << command;
  }
}

}  // namespace
}  // namespace kolvane::app
