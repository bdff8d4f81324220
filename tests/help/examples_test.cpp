// Every example in the help and the reference does what its text says.

#include <gtest/gtest.h>

#include "base/pattern.h"
#include "device/device_contract.h"
#include "help/example_run.h"
#include "help/help_files.h"
#include "help/help_pages.h"
#include "help/reference_paragraphs.h"
#include "inspect/hex_dump.h"
#include "inspect/marked_bytes.h"
#include "inspect/template_run.h"

namespace kolvane::help {
namespace {

/// An example: its page or heading, and its lines.
struct Example {
  std::string where;
  std::vector<std::string> lines;
};

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

// The blocks of that class, <pre class="kind">, of all pages.
std::vector<Example> ExamplesOfPages(const std::string& kind) {
  std::vector<Example> examples;
  const HelpPages pages(KOLVANE_HELP_FOLDER);
  for (const auto& [page, html] : pages.pages()) {
    const std::string start_tag = "<pre class=\"" + kind + "\">";
    for (std::size_t at = html.find(start_tag); at != std::string::npos; at = html.find(start_tag, at + 1)) {
      std::string text = html.substr(at + start_tag.size(), html.find("</pre>", at) - at - start_tag.size());
      for (const auto& [entity, character] : {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&amp;", "&"}})
        text = base::Pattern(entity).Replaced(text, character);
      examples.push_back({page, LinesOf(text)});
    }
  }
  return examples;
}

// The groups of rows of the reference, except the texts of its errors.
std::vector<Example> ExamplesOfReference() {
  std::vector<Example> examples;
  std::string heading;
  bool in_group = false;
  for (const auto& [paragraph, example_row] : ReferenceParagraphs(SourceOfHelp("TermCmdHelp.rtf"))) {
    const bool single_run = paragraph.runs.size() == 1;
    if (single_run && paragraph.runs[0].format.bold) heading = paragraph.runs[0].text;
    const bool row = example_row && single_run && heading != "Fehlermeldungen";
    if (row && !in_group) examples.push_back({heading, {}});
    if (row) examples.back().lines.push_back(paragraph.runs[0].text);
    in_group = row;
  }
  return examples;
}

// Whether a run reaches a $WRITELOG depends on the measured values.
bool OpensItsLog(const std::vector<std::string>& lines) {
  const auto first = [&lines](std::string_view command) {
    return std::ranges::find(lines, command, FirstWord);
  };
  return first("$WRITELOG") == lines.end() || first("$OPENLOG") < first("$WRITELOG");
}

void ExpectPlayable(const std::vector<Example>& examples) {
  for (const auto& [where, lines] : examples) {
    const ExampleRun run(lines);
    EXPECT_EQ(run.errors(), std::vector<std::string>{}) << where;
    EXPECT_TRUE(OpensItsLog(lines)) << where;
    EXPECT_TRUE(run.closed()) << where << ": a loop or a condition stays open";
  }
}

TEST(Examples, OfThePagesPlay) {
  const auto examples = ExamplesOfPages("beispiel");
  EXPECT_EQ(examples.size(), 20u);
  ExpectPlayable(examples);
}

TEST(Examples, OfTheReferencePlay) {
  const auto examples = ExamplesOfReference();
  EXPECT_EQ(examples.size(), kSpecialCommands.size() + kAddedCommands.size() + 1);
  ExpectPlayable(examples);
}

// Blocks that are not played are not command lists: a display, the content of another file, the form of a
// call.
TEST(Examples, EveryBlockOfThePagesHasItsKind) {
  const std::set<std::string> kinds = {"beispiel", "vorlage", "aufruf", "syntax", "anzeige", "datei"};
  const HelpPages pages(KOLVANE_HELP_FOLDER);
  for (const auto& [page, html] : pages.pages()) {
    EXPECT_EQ(html.find("<pre>"), std::string::npos) << page;
    for (const std::string& kind : HelpPages::Matches(html, "<pre class=\"([^\"]*)\">"))
      EXPECT_TRUE(kinds.contains(kind)) << page << ": " << kind;
  }
}

TEST(Examples, OfBranchesTakeOneBranch) {
  for (const auto& [where, lines] : ExamplesOfPages("beispiel")) {
    if (where != "befehl-ifequal.html" && where != "befehl-getparam.html") continue;
    const std::vector<std::string> log = ExampleRun(lines).log();
    EXPECT_EQ(std::ranges::count_if(log, [](const std::string& call) { return call.starts_with("write "); }),
              1)
        << where;
  }
}

TEST(Examples, OfTemplatesGiveOneLinePerField) {
  device::FakeClock clock;
  const std::string dump = inspect::BuildDump(inspect::Marked(AmplifierDevice(clock).Ask("BIN? 1,8")));
  const auto examples = ExamplesOfPages("vorlage");
  EXPECT_EQ(examples.size(), 10u);
  for (const auto& [where, lines] : examples) {
    std::string text = "BYTECOUNT=48\r\n";
    for (const std::string& line : lines) text += base::ToWindows1252(line) + "\r\n";
    const auto fields =
        std::ranges::count_if(lines, [](const std::string& line) { return line.find(';') != line.npos; });
    inspect::DumpView view{dump, 5, 0};
    inspect::ByteBuffer buffer{};
    const auto result = inspect::RunTemplate(inspect::ParseTemplate(text), {false, ","}, view, buffer);
    EXPECT_EQ(std::ssize(result), fields) << where;
    EXPECT_EQ(result.empty(), where == "vorlage-bemerkung.html" || where == "vorlage-bytecount.html")
        << where;
  }
}

class AmplifierSetup final : public device::DeviceSetup {
 public:
  device::Device& device() override { return device_; }
  // The content of its answer does not matter.
  void Receive(const std::string& /*bytes*/) override { device_.Write("*IDN?", "\n", 0); }

 private:
  device::FakeClock clock_;
  AmplifierDevice device_{clock_};
};

using device::DeviceContract;
INSTANTIATE_TEST_SUITE_P(Amplifier, DeviceContract,
                         testing::Values(device::DeviceCase{
                             .name = "AmplifierDevice",
                             .make = [] { return std::make_unique<AmplifierSetup>(); },
                             .can_fail = false,
                             .reads_binary = false}),
                         device::NameOf);

}  // namespace
}  // namespace kolvane::help
