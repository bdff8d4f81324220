// Runs the command lists of the other front ends' tests in the program.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>

#include "app/instrument.h"
#include "app/program.h"
#include "base/encoding.h"
#include "base/temp_folder.h"
#include "script/dialogue.h"
#include "terminal/texts.h"

namespace kolvane::app {
namespace {

namespace dialogue = script::dialogue;
namespace fs = std::filesystem;

std::vector<std::string> ListNames() {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(KOLVANE_TEST_LISTS)) {
    if (entry.path().extension() == ".CMD") names.push_back(entry.path().stem().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

/// Each line of `text` with `prefix` before it, except the one that replaces an answer.
std::string Lines(std::string_view text, const std::string& prefix = "") {
  std::string lines;
  while (!text.empty()) {
    const std::string_view line = text.substr(0, text.find('\n') + 1);
    if (!line.starts_with(terminal::texts::kMeasuringStopped)) lines.append(prefix).append(line);
    text.remove_prefix(line.size());
  }
  return lines;
}

class RunListsTest : public testing::TestWithParam<std::string> {
 protected:
  std::string Golden(const char* kind) const {
    return base::ReadBytes(std::string(KOLVANE_TEST_LISTS) + "/" + GetParam() + "." + kind);
  }
  std::string Log() const {
    std::string all;
    for (const std::string& name : folder_.Names()) all += base::ReadBytes(folder_.Path(name));
    std::erase(all, '\r');
    return base::FromWindows1252(all);
  }

  base::TempFolder folder_;
};

TEST_P(RunListsTest, RunsAsItsFilesSay) {
  const std::vector<std::string> replies = dialogue::Replies(Golden("device"));
  std::string transcript;
  std::size_t commands = 0;
  Instrument instrument([&](const std::string& line) {
    transcript += "> " + dialogue::Escaped(line + "\n") + "\n";
    const std::string reply = commands < replies.size() ? replies[commands++] : "";
    if (!reply.empty()) transcript += "< " + dialogue::Escaped(reply) + "\n";
    return reply;
  });
  const Outcome outcome = RunProgram({"run", std::string(KOLVANE_TEST_LISTS) + "/" + GetParam() + ".CMD",
                                      "--show-commands", "--connect", instrument.Resource()},
                                     {.folder = folder_.Path("")});
  instrument.AwaitClose();
  EXPECT_EQ(transcript, Golden("device"));
  // Lines that a list clears in the pane have been printed here.
  EXPECT_TRUE(outcome.out.ends_with(Lines(Golden("pane")))) << outcome.out;
  if (Golden("CMD").find("$CLEAR") == std::string::npos) {
    EXPECT_EQ(outcome.out, Lines(Golden("pane")));
  }
  // A word that ends an exchange is also a message here; the window shows it in the pane only.
  std::string messages = outcome.err;
  for (const std::string_view word :
       {terminal::texts::kLocalDone, terminal::texts::kRestartDone, terminal::texts::kMeasuringStopped}) {
    const std::string line = "kolvane: " + std::string(word) + "\n";
    for (std::size_t at; (at = messages.find(line)) != std::string::npos;) messages.erase(at, line.size());
  }
  EXPECT_EQ(messages, Lines(Golden("messages"), "kolvane: "));
  EXPECT_EQ(Log(), Golden("log"));
  EXPECT_EQ(outcome.status, Golden("messages").empty() ? 0 : 1);
}

std::string TestName(const testing::TestParamInfo<std::string>& info) {
  std::string name = info.param;
  std::erase_if(name, [](unsigned char c) { return std::isalnum(c) == 0; });
  return name;
}

INSTANTIATE_TEST_SUITE_P(Lists, RunListsTest, testing::ValuesIn(ListNames()), TestName);

}  // namespace
}  // namespace kolvane::app
