#include "terminal/terminal_state.h"

#include <gtest/gtest.h>

namespace kolvane::terminal {
namespace {

using Fields = std::vector<std::string>;

TEST(TerminalState, StartsWithTheDefaults) {
  const TerminalState state;
  EXPECT_EQ(state.receive.mode, 0);
  EXPECT_EQ(state.receive.binary_display, 0);
  EXPECT_EQ(state.receive.receive_terminator, "\r\n");
  EXPECT_EQ(state.receive.send_terminator, "\n");
  EXPECT_EQ(state.shown.mode, 0);
  EXPECT_EQ(state.shown.format, 0);
  EXPECT_EQ(state.shown.receive_terminator, "CRLF");
  EXPECT_EQ(state.shown.send_terminator, "LF");
  EXPECT_EQ(state.shown.timeout, "3000");
  EXPECT_TRUE(state.options.show_commands);
  EXPECT_FALSE(state.options.show_response_times);
  EXPECT_FALSE(state.options.line_breaks);
  EXPECT_FALSE(state.output.SilentMode);
  EXPECT_EQ(state.last_answer.Fields(), Fields{""});
}

TEST(LastAnswer, IsSplitAtEveryComma) {
  EXPECT_EQ((LastAnswer{"1,2,3", {}}).Fields(), (Fields{"1", "2", "3"}));
  EXPECT_EQ((LastAnswer{"12.5", {}}).Fields(), Fields{"12.5"});
  EXPECT_EQ((LastAnswer{"", {}}).Fields(), Fields{""});
  EXPECT_EQ((LastAnswer{",", {}}).Fields(), (Fields{"", ""}));
  EXPECT_EQ((LastAnswer{"a,, b ,", {}}).Fields(), (Fields{"a", "", " b ", ""}));
  EXPECT_EQ((LastAnswer{"Größe,µm", {}}).Fields(), (Fields{"Größe", "µm"}));
}

TEST(Options, AreInTheOrderOfTheMenu) {
  Options options{.show_commands = false};
  EXPECT_FALSE(options.*kOptionItems[0]);
  options.*kOptionItems[1] = true;
  EXPECT_TRUE(options.show_response_times);
  options.*kOptionItems[2] = true;
  EXPECT_TRUE(options.line_breaks);
}

}  // namespace
}  // namespace kolvane::terminal
