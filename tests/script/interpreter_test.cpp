#include "script/interpreter.h"

#include <gtest/gtest.h>

#include "device/device_state.h"
#include "script/script_bench.h"

namespace kolvane::script {
namespace {

constexpr char kIndex[] = "Index außerhalb des gültigen Bereichs";
constexpr char kOverflow[] = "Überlauf";

class InterpreterTest : public testing::Test, protected ScriptBench {
 protected:
  InterpreterState& now = state.interpreter;
};

TEST_F(InterpreterTest, AnErrorIsShownMarkedAndEndsTheRun) {
  FillList(list, "A|$FOO|B");
  EXPECT_FALSE(Execute("$FOO", 2));
  EXPECT_EQ(prompt.errors, Lines{"Fehler in Befehlsliste (Zeile 2): Unbekannter $ Befehl"});
  EXPECT_EQ(ListText(list), "A|!$FOO|B");
  EXPECT_EQ(list.current_row(), 1024);
}

TEST_F(InterpreterTest, UnknownCommands) {
  for (const char* line :
       {"$", "$FOO", "$REPEATS 1", "$REPEAT\t1", "$SPLITPARAMSX", "$ REPEAT 1", "$$REPEAT"})
    EXPECT_EQ(ErrorOf(line), "Unbekannter $ Befehl") << line;
}

// The last three of the table are not executed yet.
TEST_F(InterpreterTest, CarriesOutTheWordsOfTheTable) {
  for (const SpecialWord& special : kSpecialWords) {
    const char* argument = special.command == SpecialCommand::kAnswers ? " ALWAYS" : " 1";
    EXPECT_NE(ErrorOf(std::string(special.word) + argument), "Unbekannter $ Befehl") << special.word;
    EXPECT_EQ(FindSpecialWord(special.word), &special);
  }
}

TEST_F(InterpreterTest, AnswersAppliesToTheRestOfTheRun) {
  EXPECT_TRUE(Execute("$ANSWERS queries"));
  EXPECT_TRUE(terminal.QueriesOnly());
  EXPECT_TRUE(Execute("$ANSWERS ALWAYS"));
  EXPECT_FALSE(terminal.QueriesOnly());
  EXPECT_EQ(ErrorOf("$ANSWERS NEVER"), "Unbekannter $ Befehl");
  terminal.extras.queries_only = true;
  interpreter.ForgetRunSettings();
  EXPECT_TRUE(terminal.QueriesOnly());
}

TEST_F(InterpreterTest, CommandWordsMayHaveAnyCase) {
  EXPECT_TRUE(Execute("$repeat 2"));
  EXPECT_TRUE(Execute("$Repeat 2"));
  EXPECT_EQ(now.RepeatLevel, 2);
}

TEST_F(InterpreterTest, RepeatNotesPassesAndRow) {
  EXPECT_TRUE(Execute("$REPEAT 2", 5));
  EXPECT_EQ(now.RepeatLevel, 1);
  EXPECT_EQ(now.RepeatCount[1], 2);
  EXPECT_EQ(now.RepeatRow[1], 5);
  EXPECT_EQ(list.current_row(), 5);
}

TEST_F(InterpreterTest, RepeatUsesTheNumberAtTheArgumentsStart) {
  const auto passes = [this](const char* line) {
    now.RepeatLevel = 0;
    EXPECT_TRUE(Execute(line)) << line;
    return now.RepeatCount[1];
  };
  EXPECT_EQ(passes("$REPEAT abc"), 0);
  EXPECT_EQ(passes("$REPEAT  5"), 0);
  EXPECT_EQ(passes("$REPEAT 7x 3"), 7);
  EXPECT_EQ(passes("$REPEAT 2.5"), 2);
  EXPECT_EQ(passes("$REPEAT 3.5"), 4);
  EXPECT_EQ(passes("$REPEAT -4"), -4);
  EXPECT_EQ(passes("$REPEAT 2147483647"), 2147483647);
  EXPECT_EQ(passes("$REPEAT -2147483648"), -2147483647 - 1);
}

TEST_F(InterpreterTest, RepeatFailsWithoutAValidCount) {
  EXPECT_EQ(ErrorOf("$REPEAT"), kIndex);
  EXPECT_EQ(ErrorOf("$REPEAT,3"), kIndex);
  EXPECT_EQ(ErrorOf("$REPEAT 2147483648"), kOverflow);
  EXPECT_EQ(ErrorOf("$REPEAT -2147483649"), kOverflow);
  EXPECT_EQ(ErrorOf("$REPEAT 99999999999"), kOverflow);
  EXPECT_EQ(ErrorOf("$REPEAT 1e999"), kOverflow);
}

TEST_F(InterpreterTest, EndRepeatGoesBackWhilePassesRemain) {
  FillList(list, "$REPEAT 1|A|$ENDREPEAT");
  EXPECT_TRUE(Execute("$REPEAT 1", 1));
  list.HighlightLine(3, 0xFF0000, 0xFFFF, true);
  EXPECT_TRUE(Execute("$ENDREPEAT", 3));
  EXPECT_EQ(ListText(list), ">$REPEAT 1|A|$ENDREPEAT");
  EXPECT_EQ(now.RepeatLevel, 1);
  EXPECT_TRUE(Execute("$ENDREPEAT", 3));
  EXPECT_EQ(list.current_row(), 3);
  EXPECT_EQ(now.RepeatLevel, 0);
}

TEST_F(InterpreterTest, EndRepeatWithoutRepeatWorksOnLevelZero) {
  EXPECT_TRUE(Execute("$ENDREPEAT", 4));
  EXPECT_EQ(list.current_row(), 4);
  EXPECT_EQ(now.RepeatLevel, -1);
  EXPECT_TRUE(Execute("$REPEAT 1", 7));
  EXPECT_EQ(now.RepeatLevel, 0);
  EXPECT_EQ(now.RepeatCount[0], 1);
  EXPECT_TRUE(Execute("$ENDREPEAT", 9));
  EXPECT_EQ(list.current_row(), 7);
  EXPECT_TRUE(Execute("$ENDREPEAT", 9));
  EXPECT_EQ(now.RepeatLevel, -1);
  EXPECT_EQ(ErrorOf("$ENDREPEAT"), kIndex);
  EXPECT_EQ(now.RepeatLevel, -1);
}

TEST_F(InterpreterTest, SixteenBlocksNestAndTheSeventeenthFails) {
  for (int block = 1; block <= 16; ++block) EXPECT_EQ(ErrorOf("$REPEAT 1"), "") << block;
  EXPECT_EQ(ErrorOf("$REPEAT 1"), kIndex);
  EXPECT_EQ(now.RepeatCount[16], 1);
}

TEST_F(InterpreterTest, CountersThatReachTheEndOfTheirTypeOverflow) {
  now.RepeatLevel = 32767;
  EXPECT_EQ(ErrorOf("$REPEAT 1"), kOverflow);
  EXPECT_EQ(now.RepeatLevel, 32767);

  now.RepeatLevel = 1;
  now.RepeatCount[1] = -2147483647;
  EXPECT_EQ(ErrorOf("$ENDREPEAT"), "");
  now.RepeatLevel = 1;
  EXPECT_EQ(now.RepeatCount[1], -2147483647 - 1);
  EXPECT_EQ(ErrorOf("$ENDREPEAT"), kOverflow);

  now.IfDepth = 32766;
  EXPECT_EQ(ErrorOf("$IFERR"), "");
  EXPECT_EQ(ErrorOf("$IFERR"), kOverflow);
  EXPECT_EQ(now.IfDepth, 32767);
}

TEST_F(InterpreterTest, DelayIsOneCallOfThePortLibrary) {
  library.results["Delay"] = {7};
  EXPECT_TRUE(Execute("$DELAY 250.5"));
  EXPECT_EQ(library.calls, Lines{"Delay(250)"});
  EXPECT_EQ(device.last_result, 7);
  EXPECT_TRUE(Execute("$DELAY x"));
  EXPECT_TRUE(Execute("$DELAY -1"));
  EXPECT_EQ(library.calls, (Lines{"Delay(250)", "Delay(0)", "Delay(-1)"}));
  EXPECT_EQ(ErrorOf("$DELAY"), kIndex);
  EXPECT_EQ(ErrorOf("$DELAY 2147483648"), kOverflow);
}

TEST_F(InterpreterTest, DelayWithoutAPortLibraryIsAFailure) {
  libraries.library = nullptr;
  EXPECT_TRUE(Execute("$DELAY 10"));
  EXPECT_EQ(device.last_result, device::device_status::kNoPortLibrary);
  EXPECT_TRUE(Execute("$IFERR"));
  EXPECT_FALSE(now.SkipRows);
}

TEST_F(InterpreterTest, StopMakesTheLastRowCurrent) {
  EXPECT_TRUE(Execute("$STOP now", 3));
  EXPECT_EQ(list.current_row(), 1024);
  EXPECT_EQ(prompt.errors, Lines{});
}

TEST_F(InterpreterTest, IfErrHoldsOnAQuestionMarkOrAFailedOperation) {
  const auto skips = [this](const char* answer, std::int32_t status) {
    terminal.last_answer.text = answer;
    device.last_result = status;
    EXPECT_TRUE(Execute("$IFERR"));
    return now.SkipRows;
  };
  EXPECT_FALSE(skips("?", 0));
  EXPECT_FALSE(skips("?12", 5));
  EXPECT_FALSE(skips("0", -1));
  EXPECT_TRUE(skips("0", 0));
  EXPECT_TRUE(skips("0?", 0));
  EXPECT_TRUE(skips("", 0));
  EXPECT_EQ(now.IfDepth, 6);
}

TEST_F(InterpreterTest, ComparisonsAreBetweenTextsWithTheArgumentOnTheLeft) {
  const auto holds = [this](const char* line, const char* value) {
    now.ParamValue = value;
    EXPECT_TRUE(Execute(line)) << line;
    return !now.SkipRows;
  };
  EXPECT_TRUE(holds("$IFEQUAL OK", "OK"));
  EXPECT_FALSE(holds("$IFEQUAL OK", "ok"));
  EXPECT_FALSE(holds("$IFEQUAL OK", "OK "));
  EXPECT_FALSE(holds("$IFEQUAL 1", "1.0"));
  EXPECT_TRUE(holds("$IFEQUAL ,", ""));
  EXPECT_FALSE(holds("$IFGREATER 10", "9"));
  EXPECT_TRUE(holds("$IFGREATER 5", "10"));
  EXPECT_FALSE(holds("$IFGREATER 5", "5"));
  EXPECT_TRUE(holds("$IFGREATER a", "Z"));
  EXPECT_TRUE(holds("$IFGREATER ä", "z"));
  EXPECT_TRUE(holds("$IFGREATER 55", "5"));
  EXPECT_TRUE(holds("$IFLESS 10", "9"));
  EXPECT_FALSE(holds("$IFLESS 9", "10"));
  EXPECT_FALSE(holds("$IFLESS 9", "9"));
  EXPECT_TRUE(holds("$IFLESS ,", "x"));
  EXPECT_EQ(now.IfDepth, 15);
  for (const char* line : {"$IFEQUAL", "$IFGREATER", "$IFLESS"}) EXPECT_EQ(ErrorOf(line), kIndex) << line;
  EXPECT_EQ(now.IfDepth, 15);
}

TEST_F(InterpreterTest, EndIfIsLeftToTheRunner) {
  now.IfDepth = 1;
  now.SkipRows = true;
  EXPECT_TRUE(Execute("$ENDIF"));
  EXPECT_TRUE(Execute("$endif x"));
  EXPECT_EQ(now.IfDepth, 1);
  EXPECT_TRUE(now.SkipRows);
}

TEST_F(InterpreterTest, GoToFindsTheFirstRowThatIsTheLabel) {
  FillList(list, "$GOTO start|start: |'start:|START:|start:");
  list.HighlightLine(1, 0xFF0000, 0xFFFF, true);
  EXPECT_TRUE(Execute("$GOTO start"));
  EXPECT_EQ(ListText(list), "$GOTO start|start: |'start:|>START:|start:");
}

TEST_F(InterpreterTest, GoToComparesUmlautsWithoutCaseAndTheWholeCell) {
  FillList(list, " mäß:|mäß:x|MÄß:");
  EXPECT_TRUE(Execute("$GOTO mäß"));
  EXPECT_EQ(list.current_row(), 3);
  FillList(list, "a|:");
  EXPECT_TRUE(Execute("$GOTO ,"));
  EXPECT_EQ(list.current_row(), 2);
}

TEST_F(InterpreterTest, GoToWithoutTargetNamesTheLastRow) {
  FillList(list, "$GOTO nowhere");
  EXPECT_FALSE(Execute("$GOTO nowhere"));
  EXPECT_EQ(prompt.errors, Lines{"Fehler in Befehlsliste (Zeile 1024): Sprungziel nicht gefunden"});
  EXPECT_EQ(*list.HighlightOf(1024), kErrorRow);
  EXPECT_EQ(list.current_row(), 1024);
  EXPECT_EQ(ErrorOf("$GOTO"), kIndex);
}

TEST_F(InterpreterTest, OpensALogWithOrWithoutQuotes) {
  for (const auto& [line, name] : {std::pair{"$OPENLOG a.LOG", "a.LOG"},
                                   {"$OPENLOG \"b.LOG\"", "b.LOG"},
                                   {"$OPENLOG \"", ""},
                                   {"$OPENLOG \"\"", ""},
                                   {"$OPENLOG ,", ""}}) {
    EXPECT_TRUE(Execute(line));
    EXPECT_EQ(log.calls.back(), std::string("open ") + name);
    EXPECT_EQ(ErrorOf("$OPENLOG other"), "Logdatei bereits geöffnet");
    EXPECT_EQ(ErrorOf("$OPENLOG"), "Logdatei bereits geöffnet");
    EXPECT_TRUE(Execute("$CLOSELOG"));
  }
  EXPECT_EQ(ErrorOf("$OPENLOG"), kIndex);
}

TEST_F(InterpreterTest, WritesOneWordIntoTheOpenLog) {
  EXPECT_EQ(ErrorOf("$WRITELOG x"), "Keine Logdatei geöffnet");
  EXPECT_EQ(ErrorOf("$WRITELOG"), "Keine Logdatei geöffnet");
  Execute("$OPENLOG a");
  EXPECT_TRUE(Execute("$WRITELOG hello world"));
  EXPECT_TRUE(Execute("$WRITELOG \"x\""));
  EXPECT_TRUE(Execute("$WRITELOG \"hello world\""));
  EXPECT_TRUE(Execute("$WRITELOG ,"));
  EXPECT_EQ(ErrorOf("$WRITELOG"), kIndex);
  EXPECT_EQ(log.calls, (Lines{"open a", "write hello", "write x", "write hell", "write "}));
}

TEST_F(InterpreterTest, WritesToTheLogInSilenceAndWithoutRecording) {
  terminal.output.SilentMode = true;
  Execute("$OPENLOG a");
  EXPECT_TRUE(Execute("$WRITELOG x"));
  EXPECT_EQ(log.calls.back(), "write x");
  EXPECT_FALSE(terminal.output.log_recording);
}

TEST_F(InterpreterTest, ALogThatCannotBeOpenedDoesNotEndTheRun) {
  EXPECT_TRUE(Execute("$OPENLOG refused", 2));
  EXPECT_EQ(list.current_row(), 2);
  EXPECT_EQ(ErrorOf("$WRITELOG x"), "Keine Logdatei geöffnet");
}

TEST_F(InterpreterTest, ClosesTheLogWhetherOneIsOpenOrNot) {
  EXPECT_TRUE(Execute("$CLOSELOG"));
  EXPECT_EQ(log.calls, Lines{"close"});
}

TEST_F(InterpreterTest, SplitsTheLastAnswer) {
  terminal.last_answer.text = "a,b,c";
  EXPECT_TRUE(Execute("$SPLITPARAMS"));
  const auto param = [this](const char* line) {
    EXPECT_TRUE(Execute(line)) << line;
    return now.ParamValue;
  };
  EXPECT_EQ(param("$GETPARAM 3"), "c");
  EXPECT_EQ(param("$GETPARAM 1"), "a");
  EXPECT_EQ(param("$GETPARAM 2x"), "b");
  EXPECT_EQ(param("$GETPARAM 1.5"), "a");
  EXPECT_EQ(param("$GETPARAM 2.6"), "c");
  for (const char* line : {"$GETPARAM 0", "$GETPARAM 4", "$GETPARAM 3.1", "$GETPARAM 0.9", "$GETPARAM -1",
                           "$GETPARAM 1e300", "$GETPARAM -1e999", "$GETPARAM x", "$GETPARAM ,"})
    EXPECT_EQ(ErrorOf(line), "Ungültige Parameterposition") << line;
  EXPECT_EQ(ErrorOf("$GETPARAM"), kIndex);
  EXPECT_EQ(now.ParamValue, "c");
}

TEST_F(InterpreterTest, KeepsTheFieldsUntilTheNextSplit) {
  terminal.last_answer.text = " x ,";
  Execute("$SPLITPARAMS");
  terminal.last_answer.text = "new";
  EXPECT_TRUE(Execute("$GETPARAM 1"));
  EXPECT_EQ(now.ParamValue, " x ");
  EXPECT_TRUE(Execute("$GETPARAM 2"));
  EXPECT_EQ(now.ParamValue, "");
  terminal.last_answer.text = "";
  Execute("$SPLITPARAMS");
  EXPECT_TRUE(Execute("$GETPARAM 1"));
  EXPECT_EQ(ErrorOf("$GETPARAM 2"), "Ungültige Parameterposition");
}

TEST_F(InterpreterTest, AParameterBeforeAnySplitIsARunTimeError) {
  EXPECT_EQ(ErrorOf("$GETPARAM 1"), kIndex);
  EXPECT_EQ(ErrorOf("$GETPARAM 0"), kIndex);
}

TEST_F(InterpreterTest, ClearsThePane) {
  pane.text = "old";
  EXPECT_TRUE(Execute("$CLEAR"));
  EXPECT_EQ(pane.text, "");
}

TEST_F(InterpreterTest, SwitchesSilenceAndRecording) {
  const auto check = [this](const char* command, const bool& flag) {
    const std::string start = command;
    EXPECT_TRUE(Execute(start + " on"));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(Execute(start + " maybe"));
    EXPECT_TRUE(Execute(start + " 0"));
    EXPECT_TRUE(Execute(start + " ,"));
    EXPECT_TRUE(flag);
    EXPECT_TRUE(Execute(start + " Off"));
    EXPECT_FALSE(flag);
    EXPECT_TRUE(Execute(start + " maybe"));
    EXPECT_FALSE(flag);
    EXPECT_EQ(ErrorOf(start), kIndex);
  };
  check("$SILENT", terminal.output.SilentMode);
  check("$AUTOLOG", terminal.output.log_recording);
  EXPECT_EQ(log.calls, Lines{});
}

TEST_F(InterpreterTest, AnErrorLeavesLoopsAndConditionsAsTheyAre) {
  now.RepeatLevel = 2;
  now.IfDepth = 3;
  EXPECT_NE(ErrorOf("$FOO"), "");
  EXPECT_EQ(now.RepeatLevel, 2);
  EXPECT_EQ(now.IfDepth, 3);
}

TEST_F(InterpreterTest, TwoRecordsDoNotShareAnything) {
  ScriptBench other;
  Execute("$REPEAT 3");
  Execute("$SILENT ON");
  EXPECT_EQ(other.state.interpreter.RepeatLevel, 0);
  EXPECT_FALSE(other.terminal.output.SilentMode);
}

}  // namespace
}  // namespace kolvane::script
