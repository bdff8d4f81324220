#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "pane/fake_pane.h"
#include "pane/pane_state.h"
#include "terminal/output.h"
#include "terminal/session_fakes.h"

namespace kolvane::terminal {
namespace {

class OutputTest : public testing::Test {
 protected:
  OutputFlags flags_;
  pane::TextPane pane_;
  FakeLog log_;
  Output output_{flags_, pane_, log_};
};

TEST_F(OutputTest, ShowsALineAndRefreshesOnce) {
  output_.AddLine(LineKind::kAnswer, "a");
  output_.AddLine(LineKind::kCommand, "b");
  EXPECT_EQ(pane::Colors(pane_.text), "0:/a/ 255:b");
  EXPECT_EQ(pane_.refreshes, 2);
}

TEST_F(OutputTest, SilenceSuppressesPaneAndLog) {
  flags_ = {true, true};
  output_.AddLine(LineKind::kAnswer, "a");
  EXPECT_EQ(pane::State(pane_.text), "|");
  EXPECT_EQ(pane_.refreshes, 0);
  EXPECT_TRUE(log_.lines.empty());
}

TEST_F(OutputTest, SilenceDoesNotSuppressTextInsertedDirectly) {
  flags_.SilentMode = true;
  output_.AppendText(LineKind::kTime, "(dt = 1 ms)\r\n", 1);
  EXPECT_EQ(pane::State(pane_.text), "(dt = 1 ms)|/");
}

TEST_F(OutputTest, LogsOnlyWhileRecording) {
  output_.AddLine(LineKind::kAnswer, "not logged");
  flags_.log_recording = true;
  output_.AddLine(LineKind::kCommand, "logged");
  output_.AddLine(LineKind::kAnswer, "");
  output_.AppendText(LineKind::kTime, "direct", 0);
  flags_.log_recording = false;
  output_.AddLine(LineKind::kAnswer, "not logged either");
  EXPECT_EQ(log_.lines, (std::vector<std::string>{"logged", ""}));
}

}  // namespace
}  // namespace kolvane::terminal
