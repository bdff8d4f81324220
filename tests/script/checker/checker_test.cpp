#include "script/checker/checker.h"

#include <gtest/gtest.h>

#include "script/checker/check_text.h"

namespace kolvane::script::checker {
namespace {

std::string Times(int times, const std::string& rows) {
  std::string text;
  for (; times > 0; --times) text += rows + "|";
  return text;
}

// Jumps

TEST(Checker, KnowsLabelsAsTheInterpreterFindsThem) {
  EXPECT_EQ(Check("a:|$GOTO a"), "");
  EXPECT_EQ(Check("'a:|$GOTO 'A"), "");
  EXPECT_EQ(Check("ä:|$GOTO Ä"), "");
  EXPECT_EQ(Check("$GOTO a|a:"), "");
}

TEST(Checker, FindsJumpsWithoutTarget) {
  EXPECT_EQ(Check("$GOTO end"), "Fehler 1: Sprungziel „end:“ nicht gefunden");
  EXPECT_EQ(Check("start|$GOTO start"), "Fehler 2: Sprungziel „start:“ nicht gefunden");
  EXPECT_EQ(
      Check(" start:|$GOTO start"),
      "Fehler 2: Sprungziel „start:“ nicht gefunden: Zeile 1 unterscheidet sich nur durch Leerzeichen (1)");
  EXPECT_EQ(
      Check("start: |$GOTO START"),
      "Fehler 2: Sprungziel „START:“ nicht gefunden: Zeile 1 unterscheidet sich nur durch Leerzeichen (1)");
  EXPECT_EQ(
      Check("start :|$GOTO start"),
      "Fehler 2: Sprungziel „start:“ nicht gefunden: Zeile 1 unterscheidet sich nur durch Leerzeichen (1)");
  EXPECT_EQ(
      Check("the end:|$GOTO the end"),
      "Fehler 2: Sprungziel nicht gefunden: von der Marke in Zeile 1 zählt bis zum Leerzeichen oder Komma nur"
      " „the“ (1)");
  EXPECT_EQ(Check("'start:|$GOTO start"),
            "Fehler 2: Sprungziel „start:“ nicht gefunden, gemeint ist wohl „'start:“ in Zeile 1 => $GOTO "
            "'start (1)");
  EXPECT_EQ(Check("start:|$GOTO start:"),
            "Fehler 2: Sprungziel „start::“ nicht gefunden, gemeint ist wohl „start:“ in Zeile 1 => $GOTO "
            "start (1)");
  EXPECT_EQ(Check("start:|$GOTO satrt"),
            "Fehler 2: Sprungziel „satrt:“ nicht gefunden, gemeint ist wohl „start:“ in Zeile 1 => $GOTO "
            "start (1)");
}

TEST(Checker, ProposesNoLabelThatIsOnlyEquallyShort) {
  EXPECT_EQ(Check("a:|$GOTO b"), "Fehler 2: Sprungziel „b:“ nicht gefunden");
  EXPECT_EQ(Check("'a:|$GOTO a"),
            "Fehler 2: Sprungziel „a:“ nicht gefunden, gemeint ist wohl „'a:“ in Zeile 1 => $GOTO 'a (1)");
  EXPECT_EQ(
      Check("end1:|end2:|$GOTO end3"),
      "Fehler 3: Sprungziel „end3:“ nicht gefunden, gemeint ist wohl „end1:“ in Zeile 1 => $GOTO end1 (1)");
}

TEST(Checker, FindsLabelsThatNoJumpReaches) {
  EXPECT_EQ(Check("a:|$GOTO a|A:"),
            "Hinweis 3: Die Marke „A:“ steht schon in Zeile 1, jeder Sprung führt dorthin (1)\n"
            "Hinweis 3: Die Zeile wird nie erreicht");
  EXPECT_EQ(Check("$GOTO a|$GOTO a|a:|A:"),
            "Hinweis 2: Die Zeile wird nie erreicht\n"
            "Hinweis 4: Die Marke „A:“ steht schon in Zeile 3, jeder Sprung führt dorthin (3)");
  EXPECT_EQ(Check("a:|A:"), "");
}

TEST(Checker, FindsJumpsIntoALoop) {
  EXPECT_EQ(Check("$GOTO 'a|$REPEAT 2|'a:|$ENDREPEAT"),
            "Hinweis 1: Sprung in die Schleife aus Zeile 2, ohne dass ihr $REPEAT ausgeführt ist (2)\n"
            "Hinweis 2: Die Zeile wird nie erreicht\n"
            "Hinweis 4: Auf einem Weg hierher ist $REPEAT in Zeile 2 nicht ausgeführt (2)");
  EXPECT_EQ(Check("$REPEAT 2|'a:|$ENDREPEAT|$IFERR|$GOTO 'a|$ENDIF"),
            "Hinweis 3: Auf einem Weg hierher ist $REPEAT in Zeile 1 nicht ausgeführt (1)\n"
            "Hinweis 5: Der Sprung lässt die Bedingung aus Zeile 4 offen, $ENDIF in Zeile 6 schließt dann "
            "nicht mehr (6)\n"
            "Hinweis 5: Sprung in die Schleife aus Zeile 1, ohne dass ihr $REPEAT ausgeführt ist (1)");
}

TEST(Checker, ChecksJumpsUpToTheLastRow) {
  EXPECT_EQ(Check("$GOTO 'b|$REPEAT 2|'a:|$ENDREPEAT|'b:|$GOTO 'a"),
            "Hinweis 2: Die Zeile wird nie erreicht\n"
            "Hinweis 4: Auf einem Weg hierher ist $REPEAT in Zeile 2 nicht ausgeführt (2)\n"
            "Hinweis 6: Sprung in die Schleife aus Zeile 2, ohne dass ihr $REPEAT ausgeführt ist (2)");
}

TEST(Checker, LetsJumpsStayInsideTheirLoop) {
  EXPECT_EQ(Check("$REPEAT 2|'a:|X?|$IFERR|$GOTO 'b|$ENDIF|$GOTO 'c|'b:|$ENDIF|'c:|$ENDREPEAT"), "");
}

// An error handler at the end of the list jumps back into the loop that is still open.
TEST(Checker, LetsJumpsGoBackIntoAnOpenLoop) {
  EXPECT_EQ(Check("$REPEAT 2|X?|$GOTO 'out|'back:|$ENDREPEAT|$STOP|'out:|Y?|$GOTO 'back"), "");
}

// Loops

TEST(Checker, FindsMoreThanSixteenNestedLoops) {
  EXPECT_EQ(Check(Times(16, "$REPEAT 1") + "X?|" + Times(16, "$ENDREPEAT")), "");
  EXPECT_EQ(Check(Times(17, "$REPEAT 1") + "X?|" + Times(17, "$ENDREPEAT")),
            "Fehler 17: Mehr als 16 geschachtelte Schleifen");
  EXPECT_EQ(Check(Times(40, "$REPEAT 1|$ENDREPEAT")), "");
}

TEST(Checker, FindsLoopsThatJumpsLeaveOpen) {
  const std::string list = "'a:|$REPEAT 5|X?|$IFERR|$GOTO 'b|$ENDIF|$ENDREPEAT|$STOP|'b:|$ENDIF|$GOTO 'a";
  EXPECT_EQ(Check(list),
            "Hinweis 2: Hier können schon 16 Schleifen offen sein, weil Sprünge sie verlassen, ohne sie zu "
            "beenden");
}

TEST(Checker, FindsLoopsWithoutStartOrEnd) {
  EXPECT_EQ(Check("$REPEAT 2|X?"),
            "Hinweis 1: Zu diesem $REPEAT fehlt $ENDREPEAT, der Block läuft nur einmal");
  EXPECT_EQ(Check("X?|$ENDREPEAT"), "Hinweis 2: Zu diesem $ENDREPEAT fehlt $REPEAT");
  EXPECT_EQ(Check("$ENDREPEAT|$ENDREPEAT"),
            "Hinweis 1: Zu diesem $ENDREPEAT fehlt $REPEAT\n"
            "Fehler 2: Zu diesem $ENDREPEAT fehlt $REPEAT");
  // After the first row level 0 is open again, and the loop is like any other.
  EXPECT_EQ(Check("$ENDREPEAT|$REPEAT 2|X?|$ENDREPEAT"), "Hinweis 1: Zu diesem $ENDREPEAT fehlt $REPEAT");
}

TEST(Checker, FindsLoopsAndConditionsThatCross) {
  EXPECT_EQ(
      Check("$REPEAT 2|$IFERR|$ENDREPEAT|$ENDIF"),
      "Hinweis 2: Bei jedem Durchlauf bleibt eine Bedingung mehr offen, nach 32767 läuft der Zähler über\n"
      "Hinweis 3: Die Schleife aus Zeile 1 und die Bedingung aus Zeile 2 überkreuzen sich (2)");
  EXPECT_EQ(Check("$IFERR|$REPEAT 2|$ENDIF|$ENDREPEAT"),
            "Hinweis 3: Auf einem Weg ist hier keine Bedingung offen, die folgenden wirken dann nicht mehr\n"
            "Hinweis 4: Auf einem Weg hierher ist $REPEAT in Zeile 2 nicht ausgeführt (2)\n"
            "Hinweis 4: Die Schleife aus Zeile 2 und die Bedingung aus Zeile 1 überkreuzen sich (1)");
}

// Conditions

TEST(Checker, FindsConditionsWithoutStartOrEnd) {
  EXPECT_EQ(Check("$IFERR|X?"), "Hinweis 1: Zu dieser Bedingung fehlt $ENDIF");
  EXPECT_EQ(Check("$IFLESS 3|X?"), "Hinweis 1: Zu dieser Bedingung fehlt $ENDIF");
  EXPECT_EQ(Check("X?|$ENDIF"),
            "Hinweis 2: Zu diesem $ENDIF fehlt die Bedingung, die folgenden wirken dann nicht mehr");
  EXPECT_EQ(Check("$IFERR|$ENDIF now"),
            "Hinweis 1: Zu dieser Bedingung fehlt $ENDIF\n"
            "Hinweis 2: Mit „now“ dahinter schließt $ENDIF keine Bedingung => $ENDIF");
}

// The conditions that a miscount makes wrong are not reported one by one.
TEST(Checker, ReportsAMiscountOnce) {
  EXPECT_EQ(Check("$ENDIF|$IFERR|X?|$ENDIF|$IFERR|X?|$ENDIF"),
            "Hinweis 1: Zu diesem $ENDIF fehlt die Bedingung, die folgenden wirken dann nicht mehr");
}

TEST(Checker, FindsConditionsInsideOthers) {
  EXPECT_EQ(Check("$IFERR|X?|$IFLESS 3|Y?|$ENDIF|Z?|$ENDIF"),
            "Hinweis 3: Innere Bedingung: Gilt die äußere aus Zeile 1 nicht, schließt schon das innere "
            "$ENDIF sie (1)");
}

TEST(Checker, FindsJumpsThatLeaveAConditionOpen) {
  EXPECT_EQ(Check("X?|$IFERR|$GOTO 'a|$ENDIF|'a:|$IFLESS 3|Y?|$ENDIF|Z?"),
            "Hinweis 3: Der Sprung lässt die Bedingung aus Zeile 2 offen, $ENDIF in Zeile 8 schließt dann "
            "nicht mehr (8)");
  EXPECT_EQ(Check("X?|$IFERR|$GOTO 'a|$ENDIF|Y?|$STOP|'a:|$ENDIF|$IFLESS 3|Y?|$ENDIF|Z?"), "");
  // The second jump's condition is closed in the last row.
  EXPECT_EQ(
      Check("X?|$IFERR|$GOTO 'a|$ENDIF|'a:|$IFLESS 3|Y?|$ENDIF|$IFERR|$GOTO 'z|$ENDIF|$STOP|'z:|$ENDIF"),
      "Hinweis 3: Der Sprung lässt die Bedingung aus Zeile 2 offen, $ENDIF in Zeile 8 schließt dann "
      "nicht mehr (8)");
}

TEST(Checker, FindsConditionsThatAddUp) {
  EXPECT_EQ(
      Check("'a:|$IFERR|$GOTO 'a|$ENDIF"),
      "Hinweis 2: Bei jedem Durchlauf bleibt eine Bedingung mehr offen, nach 32767 läuft der Zähler über\n"
      "Hinweis 3: Der Sprung lässt die Bedingung aus Zeile 2 offen, $ENDIF in Zeile 4 schließt dann nicht "
      "mehr (4)");
}

// Parameters and log

TEST(Checker, FindsParametersWithoutASplit) {
  EXPECT_EQ(Check("$GETPARAM 1"), "Fehler 1: Vor diesem $GETPARAM steht kein $SPLITPARAMS");
  EXPECT_EQ(Check("X?|$IFERR|$SPLITPARAMS|$ENDIF|$GETPARAM 1|$GETPARAM 2"),
            "Hinweis 5: Auf einem Weg hierher steht kein $SPLITPARAMS vor diesem $GETPARAM");
  EXPECT_EQ(Check("$GOTO 'a|$SPLITPARAMS|'a:|$GETPARAM 1"),
            "Hinweis 2: Die Zeile wird nie erreicht\n"
            "Fehler 4: Vor diesem $GETPARAM steht kein $SPLITPARAMS");
  EXPECT_EQ(Check("X?|$SPLITPARAMS|$GETPARAM 1|$GETPARAM 2"), "");
}

TEST(Checker, FindsLinesForALogThatIsClosed) {
  EXPECT_EQ(Check("$WRITELOG x"), "Fehler 1: Keine Logdatei geöffnet");
  EXPECT_EQ(Check("$OPENLOG a|$WRITELOG x|$CLOSELOG|$WRITELOG y"), "Fehler 4: Keine Logdatei geöffnet");
  EXPECT_EQ(Check("$OPENLOG a|$IFERR|$CLOSELOG|$ENDIF|$WRITELOG y|$WRITELOG z"),
            "Hinweis 5: Auf einem Weg hierher ist keine Logdatei geöffnet");
  EXPECT_EQ(Check("$CLOSELOG|$OPENLOG a|$WRITELOG x|$CLOSELOG|$OPENLOG b|$WRITELOG y|$CLOSELOG|$CLOSELOG"),
            "");
}

TEST(Checker, FindsASecondLog) {
  EXPECT_EQ(Check("$OPENLOG a|$OPENLOG b"), "Fehler 2: Logdatei bereits geöffnet");
  EXPECT_EQ(Check("$IFERR|$OPENLOG a|$ENDIF|$OPENLOG b"),
            "Hinweis 4: Auf einem Weg hierher ist die Logdatei bereits geöffnet");
}

TEST(Checker, OpensNoLogWithoutAName) {
  EXPECT_EQ(Check("$OPENLOG \"\"|$WRITELOG x"), "Fehler 2: Keine Logdatei geöffnet");
  EXPECT_NE(Check("$OPENLOG  a|$WRITELOG x").find("Fehler 2: Keine Logdatei geöffnet"), std::string::npos);
  EXPECT_EQ(Check("$OPENLOG \"\"|$OPENLOG a|$WRITELOG x"), "");
  EXPECT_EQ(Check("$OPENLOG a|$OPENLOG \"\""), "Fehler 2: Logdatei bereits geöffnet");
}

TEST(Checker, StartsWithTheLogAsTheRunFindsIt) {
  const RunStart open = StartWithLog(LogAtStart::kOpen);
  EXPECT_EQ(Check("$WRITELOG x|$CLOSELOG|$OPENLOG a", open), "");
  EXPECT_EQ(Check("$OPENLOG a", open), "Fehler 1: Logdatei bereits geöffnet");
  const RunStart unknown;
  EXPECT_EQ(Check("$OPENLOG a|$WRITELOG x", unknown), "");
  EXPECT_EQ(Check("$WRITELOG x|$WRITELOG y", unknown),
            "Hinweis 1: Keine Logdatei geöffnet, falls nicht schon vor dem Ablauf eine offen ist");
  EXPECT_EQ(Check("$CLOSELOG|$WRITELOG x", unknown), "Fehler 2: Keine Logdatei geöffnet");
}

// Rows

TEST(Checker, FindsRowsThatAreNeverReached) {
  EXPECT_EQ(Check("$STOP|X?"), "Hinweis 2: Die Zeile wird nie erreicht");
  EXPECT_EQ(Check("X?|$STOP|' note||X?|' note|Y?|"), "Hinweis 5: Die Zeilen 5 bis 7 werden nie erreicht");
  EXPECT_EQ(Check("$GOTO a|X?|a:|Y?"), "Hinweis 2: Die Zeile wird nie erreicht");
  EXPECT_EQ(Check("$IFERR|$STOP|X?|$ENDIF"), "Hinweis 3: Die Zeile wird nie erreicht");
  EXPECT_EQ(Check("$REPEAT 3|$STOP|$ENDREPEAT"), "Hinweis 3: Die Zeile wird nie erreicht");
  EXPECT_EQ(Check("$IFERR|$STOP|$ENDIF|X?|$STOP|' end"), "");
}

// A row that would be refused is a hint only if it is never reached.
TEST(Checker, HasOnlyHintsForRowsThatAreNeverReached) {
  EXPECT_EQ(Check("$STOP|$FOO"),
            "Hinweis 2: Unbekannter $ Befehl „$FOO“\n"
            "Hinweis 2: Die Zeile wird nie erreicht");
}

// The rows after an error are checked as if it were corrected.
TEST(Checker, ContinuesAfterAnError) {
  EXPECT_EQ(Check("$FOO|$BAR|X?"),
            "Fehler 1: Unbekannter $ Befehl „$FOO“\n"
            "Fehler 2: Unbekannter $ Befehl „$BAR“");
  EXPECT_EQ(Check("$GOTO nowhere|$BAR"),
            "Fehler 1: Sprungziel „nowhere:“ nicht gefunden\n"
            "Fehler 2: Unbekannter $ Befehl „$BAR“");
}

TEST(Checker, StartsWithTheLoopsAndConditionsOfEarlierRuns) {
  InterpreterState state;
  state.RepeatLevel = 16;
  EXPECT_EQ(Check("$REPEAT 1|$ENDREPEAT", RunStart::Of(state, LogAtStart::kClosed)),
            "Fehler 1: Mehr als 16 geschachtelte Schleifen");
  state.RepeatLevel = 15;
  EXPECT_EQ(Check("$REPEAT 1|$ENDREPEAT", RunStart::Of(state, LogAtStart::kClosed)), "");
  state = {};
  state.ParamList = {""};
  EXPECT_EQ(Check("$GETPARAM 1", RunStart::Of(state, LogAtStart::kClosed)), "");
  state = {};
  state.IfDepth = 1;
  EXPECT_EQ(Check("$IFERR|X?|$ENDIF", RunStart::Of(state, LogAtStart::kClosed)),
            "Hinweis 3: Schließt die Bedingung nicht, wenn noch eine frühere offen ist");
  EXPECT_EQ(Check("X?|$ENDIF", RunStart::Of(state, LogAtStart::kClosed)), "");
}

// Row 3 is where the earlier run's loop starts: the rows after it are reached.
TEST(Checker, GoesBackToTheRowOfAnEarlierLoop) {
  InterpreterState state;
  state.RepeatLevel = 1;
  state.RepeatRow[1] = 3;
  state.RepeatCount[1] = 1;
  const auto check = [&state] {
    return Check("$GOTO e|A?|B?|C?|e:|$ENDREPEAT", RunStart::Of(state, LogAtStart::kClosed));
  };
  EXPECT_EQ(check(),
            "Hinweis 2: Die Zeilen 2 bis 3 werden nie erreicht\n"
            "Hinweis 6: Zu diesem $ENDREPEAT fehlt $REPEAT");
  state.RepeatCount[1] = 0;
  EXPECT_EQ(check(),
            "Hinweis 2: Die Zeilen 2 bis 4 werden nie erreicht\n"
            "Hinweis 6: Zu diesem $ENDREPEAT fehlt $REPEAT");
}

// Which loop is open in row 7 is not known, so it goes back to the row of an earlier one too.
TEST(Checker, GoesBackToEachLoopThatMayBeOpen) {
  InterpreterState state;
  state.RepeatRow[2] = 9;
  state.RepeatCount[2] = 1;
  const auto unreached = [&state] {
    const std::string rows = "$IFERR|$REPEAT 2|$GOTO in|$ENDIF|$REPEAT 3|in:|$ENDREPEAT|$STOP|A?|B?";
    const std::string findings = Check(rows, RunStart::Of(state, LogAtStart::kClosed));
    return findings.substr(findings.rfind('\n') + 1);
  };
  EXPECT_EQ(unreached(), "Hinweis 9: Die Zeile wird nie erreicht");
  state.RepeatCount[2] = 0;
  EXPECT_EQ(unreached(), "Hinweis 9: Die Zeilen 9 bis 10 werden nie erreicht");
}

TEST(Checker, ChecksTheRowsOfAList) {
  CommandList list;
  list.SetTexts(3, {"$FOO", "", "$BAR"});
  EXPECT_EQ(FindingsText(CheckList(list)),
            "Fehler 3: Unbekannter $ Befehl „$FOO“\n"
            "Fehler 5: Unbekannter $ Befehl „$BAR“");
}

TEST(Checker, ChecksAFullList) {
  std::string rows = Times(1023, "X?");
  EXPECT_EQ(Check(rows + "$STOP"), "");
  EXPECT_EQ(Check(rows + "$FOO"), "Fehler 1024: Unbekannter $ Befehl „$FOO“");
}

TEST(Indents, FollowLoopsAndConditions) {
  CommandList list;
  list.SetTexts(1, {"A", "$repeat 2", "B", "$IFERR", "C", "$ENDIF", " $ENDREPEAT", "D", "$ENDREPEAT", "E"});
  EXPECT_EQ(Indents(list), std::vector({0, 0, 1, 1, 2, 1, 0, 0, 0, 0}));
  EXPECT_TRUE(Indents(CommandList()).empty());
}

}  // namespace
}  // namespace kolvane::script::checker
