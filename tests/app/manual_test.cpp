#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <variant>

#include "amplifier/options.h"
#include "app/options.h"

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

TEST(Manual, HasTheOptionsOfTheHelpAndNoOther) {
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
  options.insert("--connect");  // kolvane's, in the example
  EXPECT_EQ(OptionsIn(Manual("kolvane-amplifier.1")), options);
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
