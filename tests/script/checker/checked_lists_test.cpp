// What the checker reports for existing lists.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "base/pattern.h"
#include "base/temp_folder.h"
#include "script/checker/check_text.h"
#include "script/command_file.h"
#include "script/list_names.h"

namespace kolvane::script::checker {
namespace {

namespace fs = std::filesystem;

std::vector<Finding> FindingsOf(const std::string& file) {
  CommandList list;
  EXPECT_TRUE(LoadCommandFile(list, file).ok()) << file;
  EXPECT_GT(list.LastUsedRow(), 0) << file;
  return CheckList(list);
}

std::string ErrorsIn(const std::vector<Finding>& findings) {
  std::vector<Finding> errors;
  for (const Finding& finding : findings)
    if (finding.kind == FindingKind::kError) errors.push_back(finding);
  return FindingsText(errors);
}

TEST(CheckedLists, ListsThatPlayToTheirEndHaveNoErrors) {
  int lists = 0;
  for (const std::string& list : ListNames()) {
    const std::string name = std::string(KOLVANE_TEST_LISTS) + "/" + list;
    if (fs::exists(name + ".messages")) continue;
    ++lists;
    EXPECT_EQ(ErrorsIn(FindingsOf(name + ".CMD")), "") << list;
  }
  EXPECT_GT(lists, 5);
}

TEST(CheckedLists, ListsThatEndInAnErrorHaveItInItsRow) {
  const auto first = [](const std::string& name) {
    const std::vector<Finding> findings =
        FindingsOf(std::string(KOLVANE_TEST_LISTS) + "/error-" + name + ".CMD");
    return ErrorsIn(findings).substr(0, ErrorsIn(findings).find(':'));
  };
  EXPECT_EQ(first("argument"), "Fehler 1");
  EXPECT_EQ(first("jump"), "Fehler 2");
  EXPECT_EQ(first("log-open"), "Fehler 2");
  EXPECT_EQ(first("no-split"), "Fehler 2");
  EXPECT_EQ(first("overflow"), "Fehler 1");
  EXPECT_EQ(first("too-deep"), "Fehler 33");
  EXPECT_EQ(first("unknown"), "Fehler 2");
}

TEST(CheckedLists, TheDemoHasNoFindings) {
  EXPECT_EQ(FindingsText(FindingsOf(KOLVANE_HELP_FOLDER "/demo.CMD")), "");
}

std::string Unescaped(std::string text) {
  text = base::Pattern("&lt;").Replaced(text, "<");
  text = base::Pattern("&gt;").Replaced(text, ">");
  return base::Pattern("&amp;").Replaced(text, "&");
}

/// The example on a page of the help, rows separated by "|".
std::string Example(const fs::path& page) {
  const std::string html = base::ReadBytes(page.string());
  const std::size_t start = html.find('>', html.find("<pre")) + 1;
  const std::string text = html.substr(start, html.find("</pre>") - start);
  return base::Pattern("\n").Replaced(Unescaped(text), "|");
}

TEST(CheckedLists, ExamplesOfTheHelpHaveNoErrors) {
  int examples = 0;
  for (const auto& entry : fs::directory_iterator(KOLVANE_HELP_FOLDER "/pages")) {
    const std::string name = entry.path().filename().string();
    if (!name.starts_with("befehl-") && name != "beispiele.html" && name != "befehlsliste-grundlagen.html")
      continue;
    ++examples;
    const std::string example = Example(entry.path());
    EXPECT_NE(example.find('$'), std::string::npos) << name;
    EXPECT_EQ(ErrorsIn(CheckList(RowsOf(example))), "") << name << "\n" << example;
  }
  EXPECT_GE(examples, 20);
}

}  // namespace
}  // namespace kolvane::script::checker
