#include "script/completion.h"

#include <gtest/gtest.h>

#include "script/list_text.h"

namespace kolvane::script {
namespace {

std::string Shown(std::string_view typed, std::string_view rows = "") {
  CommandList list;
  FillList(list, rows);
  std::string shown;
  for (const Completion& each : Completions(typed, list)) shown += (shown.empty() ? "" : "|") + each.shown;
  return shown;
}

TEST(Completion, OffersTheWordsThatStartWithWhatIsTyped) {
  EXPECT_EQ(Shown("$if"), "$IFERR|$IFEQUAL text|$IFGREATER text|$IFLESS text");
  EXPECT_EQ(Shown("$GE"), "$GETPARAM n");
  EXPECT_EQ(Shown("$D"), "$DELAY ms");
  EXPECT_EQ(Shown("$X"), "");
  EXPECT_EQ(Shown("MEAS"), "");
  EXPECT_EQ(Shown(""), "");
}

TEST(Completion, LeavesRoomForAnArgument) {
  CommandList list;
  EXPECT_EQ(Completions("$REP", list), std::vector({Completion{"$REPEAT ", "$REPEAT n"}}));
  EXPECT_EQ(Completions("$CLOSE", list), std::vector({Completion{"$CLOSELOG", "$CLOSELOG"}}));
}

TEST(Completion, OffersTheLabelsAfterGoto) {
  constexpr std::string_view kRows = "start:|MEAS?|'rest:|two words:|ende:|:";
  EXPECT_EQ(Shown("$goto ", kRows), "$goto start|$goto 'rest|$goto ende");
  EXPECT_EQ(Shown("$GOTO S", kRows), "$GOTO start");
}

TEST(Completion, OffersWhatACommandTakes) {
  EXPECT_EQ(Shown("$SILENT "), "$SILENT ON|$SILENT OFF");
  EXPECT_EQ(Shown("$AUTOLOG of"), "$AUTOLOG OFF");
  EXPECT_EQ(Shown("$REPEAT "), "");
}

TEST(Completion, OffersNothingForCompleteWords) {
  EXPECT_EQ(Shown("$STOP"), "");
  EXPECT_EQ(Shown("$repeat"), "");
  EXPECT_EQ(Shown("$SILENT on"), "");
  EXPECT_EQ(Shown("$GOTO a", "a:|ab:"), "");
}

}  // namespace
}  // namespace kolvane::script
