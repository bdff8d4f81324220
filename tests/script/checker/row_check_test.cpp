#include <gtest/gtest.h>

#include "script/checker/check_text.h"

namespace kolvane::script::checker {
namespace {

TEST(RowCheck, ReportsNothingForCorrectRows) {
  EXPECT_EQ(Check(""), "");
  EXPECT_EQ(Check("MSV? 1,2| *IDN?  |' $FOO|   ||start:"), "");
  EXPECT_EQ(
      Check("$CLEAR| $Clear |$SILENT on|$AUTOLOG OFF|$DELAY 0|$DELAY 2147483647|$DELAY &HFF|$DELAY 1e3"), "");
  EXPECT_EQ(Check("$FLUSH|$READ|$ANSWERS ALWAYS|$answers queries"), "");
}

TEST(RowCheck, FindsUnknownWords) {
  EXPECT_EQ(Check("$FOO"), "Fehler 1: Unbekannter $ Befehl „$FOO“");
  EXPECT_EQ(Check("$"), "Fehler 1: Unbekannter $ Befehl „$“");
  EXPECT_EQ(Check("$SPLITPARAMETERLIST"), "Fehler 1: Unbekannter $ Befehl „$SPLITPARAMETERLIST“");
}

TEST(RowCheck, ProposesTheMostSimilarWord) {
  const auto proposal = [](std::string_view row) {
    const std::vector<Finding> findings = CheckList(RowsOf(row));
    return findings.empty() ? "nothing" : findings.front().replacement;
  };
  EXPECT_EQ(Check("$DELYA 5"),
            "Fehler 1: Unbekannter $ Befehl „$DELYA“, gemeint ist wohl „$DELAY 5“ => $DELAY 5");
  EXPECT_EQ(Check("$STPO"), "Fehler 1: Unbekannter $ Befehl „$STPO“, gemeint ist wohl „$STOP“ => $STOP");
  EXPECT_EQ(proposal("$SPLITPARAM"), "$SPLITPARAMS");
  EXPECT_EQ(proposal("$split"), "$SPLITPARAMS");
  EXPECT_EQ(proposal("$GET 2"), "$GETPARAM 2");
  EXPECT_EQ(proposal("$STOPP"), "$STOP");
  EXPECT_EQ(proposal("$DELAYA 5"), "$DELAY 5");
  EXPECT_EQ(proposal("$DELAYZ 5"), "$DELAY 5");
  EXPECT_EQ(proposal("$STOP;"), "$STOP");
  EXPECT_EQ(proposal("$DELAY100"), "$DELAY 100");
  EXPECT_EQ(proposal("$DELAY\t100"), "$DELAY 100");
  EXPECT_EQ(proposal("$DELAY=100"), "$DELAY 100");
  EXPECT_EQ(proposal("$ STOP"), "$STOP");
  EXPECT_EQ(proposal("$ delay 5"), "$delay 5");
  EXPECT_EQ(proposal("$WAIT 5"), "$DELAY 5");
  EXPECT_EQ(proposal("$EXIT"), "$STOP");
  EXPECT_EQ(proposal("$END"), "");
  EXPECT_EQ(proposal("$IF"), "");
  EXPECT_EQ(proposal("$XYZ"), "");
}

TEST(RowCheck, ExplainsThatThereIsNoElse) {
  const std::string why =
      ": Einen Sonst-Zweig gibt es nicht, schreiben Sie hinter $ENDIF eine zweite Bedingung";
  EXPECT_EQ(Check("$IFERR|$ELSE|$ENDIF"), "Fehler 2: Unbekannter $ Befehl „$ELSE“" + why);
  EXPECT_EQ(Check("$else"), "Fehler 1: Unbekannter $ Befehl „$else“" + why);
  EXPECT_EQ(Check("$ELSEIF 3"), "Fehler 1: Unbekannter $ Befehl „$ELSEIF“" + why);
  EXPECT_EQ(Check("$SONST"), "Fehler 1: Unbekannter $ Befehl „$SONST“" + why);
}

// The row counts as the command it was meant to be: only the word is wrong.
TEST(RowCheck, ReportsNothingForThePartnerOfAMisspelledWord) {
  EXPECT_EQ(Check("$REPEAT 2|X?|$ENDREPAET"),
            "Fehler 3: Unbekannter $ Befehl „$ENDREPAET“, gemeint ist wohl „$ENDREPEAT“ => $ENDREPEAT");
  EXPECT_EQ(Check("$IFER|X?|$ENDIF"),
            "Fehler 1: Unbekannter $ Befehl „$IFER“, gemeint ist wohl „$IFERR“ => $IFERR");
}

// A failed condition skips the row, which is not an $ENDIF, and with it the rest of the list.
TEST(RowCheck, HasNoErrorForAMisspelledEndThatIsOnlySkipped) {
  EXPECT_EQ(Check("$IFERR|X?|$ENDFI|Y?"),
            "Fehler 3: Unbekannter $ Befehl „$ENDFI“, gemeint ist wohl „$ENDIF“ => $ENDIF");
  EXPECT_EQ(Check("$IFERR|$STOP|$ENDFI|Y?"),
            "Hinweis 3: Unbekannter $ Befehl „$ENDFI“, gemeint ist wohl „$ENDIF“ => $ENDIF\n"
            "Hinweis 3: Die Zeile wird nie erreicht");
  EXPECT_EQ(Check("$IFERR|$STOP|$ENDFI|$ENDIF|Y?"),
            "Hinweis 3: Unbekannter $ Befehl „$ENDFI“, gemeint ist wohl „$ENDIF“ => $ENDIF\n"
            "Hinweis 3: Die Zeile wird nie erreicht\n"
            "Hinweis 4: Auf einem Weg ist hier keine Bedingung offen, die folgenden wirken dann nicht mehr");
}

TEST(RowCheck, LooksForThePartnerOfAMisspelledWordThatIsNeverReached) {
  EXPECT_EQ(Check("$STOP|$IFLES|"),
            "Hinweis 2: Unbekannter $ Befehl „$IFLES“, gemeint ist wohl „$IFLESS“ => $IFLESS\n"
            "Hinweis 2: Zu dieser Bedingung fehlt $ENDIF\n"
            "Hinweis 2: Die Zeile wird nie erreicht");
}

TEST(RowCheck, FindsMissingArguments) {
  EXPECT_EQ(Check("$REPEAT|$ENDREPEAT"), "Fehler 1: Zu $REPEAT fehlt die Zahl");
  EXPECT_EQ(Check("$DELAY  "), "Fehler 1: Zu $DELAY fehlt die Zahl");
  EXPECT_EQ(Check("$DELAY,5"), "Fehler 1: Zu $DELAY fehlt die Zahl");
  EXPECT_EQ(Check("$SPLITPARAMS|$GETPARAM"), "Fehler 2: Zu $GETPARAM fehlt die Position");
  EXPECT_EQ(Check("$IFEQUAL|$ENDIF"), "Fehler 1: Zu $IFEQUAL fehlt der Text");
  EXPECT_EQ(Check("$GOTO"), "Fehler 1: Zu $GOTO fehlt die Marke");
  EXPECT_EQ(Check("$OPENLOG"), "Fehler 1: Zu $OPENLOG fehlt der Dateiname");
  EXPECT_EQ(Check("$OPENLOG a|$WRITELOG"), "Fehler 2: Zu $WRITELOG fehlt der Text");
  EXPECT_EQ(Check("$SILENT"), "Fehler 1: Zu $SILENT fehlt ON oder OFF");
  EXPECT_EQ(Check("$ANSWERS"), "Fehler 1: Zu $ANSWERS fehlt ALWAYS oder QUERIES");
}

TEST(RowCheck, FindsArgumentsThatSecondSpacesMakeEmpty) {
  const std::string why = ": Das Argument ist leer, weil zwei Leerzeichen davor stehen";
  EXPECT_EQ(Check("$DELAY  5"), "Hinweis 1" + why + " => $DELAY 5");
  EXPECT_EQ(Check("$delay   5 6"), "Hinweis 1" + why + " => $DELAY 5 6");
  EXPECT_EQ(Check("$SPLITPARAMS|$GETPARAM  1"), "Fehler 2" + why + " => $GETPARAM 1");
  EXPECT_EQ(Check("$IFEQUAL  x|$ENDIF"), "Hinweis 1" + why + " => $IFEQUAL x");
  EXPECT_EQ(Check("$ANSWERS  ALWAYS"), "Fehler 1" + why + " => $ANSWERS ALWAYS");
  EXPECT_EQ(Check("'a:|$GOTO  'a"), "Fehler 2" + why + " => $GOTO 'a (1)");
  EXPECT_EQ(Check("$IFEQUAL ,|$ENDIF"), "Hinweis 1: Das Argument ist leer");
  EXPECT_EQ(Check("$GOTO  x|:"), "Hinweis 1" + why) << "a label without a name";
  EXPECT_EQ(Check("$GOTO ,x|:"), "Hinweis 1: Das Argument ist leer");
}

TEST(RowCheck, FindsSurplusText) {
  EXPECT_EQ(Check("$STOP now"), "Hinweis 1: „now“ wird nicht beachtet => $STOP");
  EXPECT_EQ(Check("$CLEAR,"), "Hinweis 1: „,“ wird nicht beachtet => $CLEAR");
  EXPECT_EQ(Check("$DELAY 5 'ms"), "Hinweis 1: „'ms“ wird nicht beachtet");
  EXPECT_EQ(Check("$OPENLOG a|$WRITELOG b c"), "Hinweis 2: „c“ wird nicht beachtet => $WRITELOG b_c");
  EXPECT_EQ(Check("$OPENLOG a|$WRITELOG \"b c\""),
            "Hinweis 2: „c\"“ wird nicht beachtet => $WRITELOG \"b_c\"");
  EXPECT_EQ(Check("$OPENLOG a|$WRITELOG b,c"), "Hinweis 2: „,c“ wird nicht beachtet");
  EXPECT_EQ(Check("$READ 5"), "Hinweis 1: „5“ wird nicht beachtet => $READ");
}

TEST(RowCheck, FindsQuotesThatAreNotClosed) {
  EXPECT_EQ(Check("$OPENLOG a|$WRITELOG \"x"),
            "Hinweis 2: Das schließende Anführungszeichen fehlt, vom Text „\"x“ fällt das letzte Zeichen weg"
            " => $WRITELOG \"x\"");
  EXPECT_EQ(Check("$OPENLOG \"|$OPENLOG a|$WRITELOG \"x\"|$WRITELOG x\""),
            "Hinweis 1: Das schließende Anführungszeichen fehlt, vom Text „\"“ fällt das letzte Zeichen weg"
            " => $OPENLOG \"\"");
}

TEST(RowCheck, FindsArgumentsThatAreNotNumbers) {
  EXPECT_EQ(Check("$DELAY abc"), "Hinweis 1: „abc“ ist keine Zahl, es gilt 0");
  EXPECT_EQ(Check("$DELAY 5x"), "Hinweis 1: „5x“ ist keine Zahl, es gilt 5");
  EXPECT_EQ(Check("$DELAY &Hx"), "Hinweis 1: „&Hx“ ist keine Zahl, es gilt 0");
  EXPECT_EQ(Check("$DELAY 2.5"), "Hinweis 1: „2.5“ wird gerundet, es gilt 2");
  EXPECT_EQ(Check("$DELAY 3.5"), "Hinweis 1: „3.5“ wird gerundet, es gilt 4");
  EXPECT_EQ(Check("$DELAY 2.0"), "");
  EXPECT_EQ(Check("$DELAY 2,5"),
            "Hinweis 1: Das Komma beendet die Zahl, es gilt 2; Dezimalzeichen ist der Punkt");
  EXPECT_EQ(Check("$DELAY 2,x"), "Hinweis 1: „,x“ wird nicht beachtet");
  EXPECT_EQ(Check("$DELAY -1"), "Hinweis 1: Die Wartezeit ist negativ");
  EXPECT_EQ(Check("$REPEAT -1|$ENDREPEAT"), "Hinweis 1: Eine negative Zahl bedeutet einen Durchgang, wie 0");
}

TEST(RowCheck, FindsNumbersPastTheirType) {
  const std::string why = "“ passt nicht, $REPEAT nimmt Zahlen von -2147483648 bis 2147483647";
  EXPECT_EQ(Check("$REPEAT 2147483647|$ENDREPEAT"), "");
  EXPECT_EQ(Check("$REPEAT 2147483647.4|$ENDREPEAT"),
            "Hinweis 1: „2147483647.4“ wird gerundet, es gilt 2147483647");
  EXPECT_EQ(Check("$REPEAT 2147483647.5|$ENDREPEAT"), "Fehler 1: „2147483647.5" + why);
  EXPECT_EQ(Check("$REPEAT 2147483648|$ENDREPEAT"), "Fehler 1: „2147483648" + why);
  EXPECT_EQ(Check("$REPEAT -2147483649|$ENDREPEAT"), "Fehler 1: „-2147483649" + why);
  EXPECT_EQ(Check("$REPEAT 1e400|$ENDREPEAT"), "Fehler 1: „1e400" + why);
  EXPECT_EQ(Check("$DELAY 99999999999"),
            "Fehler 1: „99999999999“ passt nicht, $DELAY nimmt Zahlen von -2147483648 bis 2147483647");
}

// One less than the smallest number cannot be represented.
TEST(RowCheck, FindsTheCountThatCannotBeLowered) {
  EXPECT_EQ(Check("$REPEAT -2147483647|$ENDREPEAT"),
            "Hinweis 1: Eine negative Zahl bedeutet einen Durchgang, wie 0");
  EXPECT_EQ(Check("$REPEAT -2147483648|$ENDREPEAT"),
            "Hinweis 1: Der Zähler läuft bei $ENDREPEAT über, verwenden Sie 0 für einen Durchgang\n"
            "Fehler 2: Der Zähler der Schleife aus Zeile 1 läuft über (1)");
}

// The loop that is open, not the one whose $ENDREPEAT this is.
TEST(RowCheck, NamesTheLoopWhoseCountCannotBeLowered) {
  EXPECT_EQ(Check("$REPEAT -2147483648|$GOTO in|$REPEAT 2|in:|$ENDREPEAT"),
            "Hinweis 1: Der Zähler läuft bei $ENDREPEAT über, verwenden Sie 0 für einen Durchgang\n"
            "Hinweis 1: Zu diesem $REPEAT fehlt $ENDREPEAT, der Block läuft nur einmal\n"
            "Hinweis 2: Sprung in die Schleife aus Zeile 3, ohne dass ihr $REPEAT ausgeführt ist (3)\n"
            "Hinweis 3: Die Zeile wird nie erreicht\n"
            "Fehler 5: Der Zähler der Schleife aus Zeile 1 läuft über (1)");
  // Where either may be open, its own.
  EXPECT_EQ(Check("X?|$IFERR|$REPEAT -2147483648|$GOTO in|$ENDIF|$REPEAT -2147483648|in:|$ENDREPEAT"),
            "Hinweis 3: Der Zähler läuft bei $ENDREPEAT über, verwenden Sie 0 für einen Durchgang\n"
            "Hinweis 3: Zu diesem $REPEAT fehlt $ENDREPEAT, der Block läuft nur einmal\n"
            "Hinweis 4: Sprung in die Schleife aus Zeile 6, ohne dass ihr $REPEAT ausgeführt ist (6)\n"
            "Hinweis 6: Der Zähler läuft bei $ENDREPEAT über, verwenden Sie 0 für einen Durchgang\n"
            "Hinweis 8: Der Zähler der Schleife aus Zeile 6 läuft über (6)");
}

TEST(RowCheck, FindsPositionsThatDoNotExist) {
  const auto position = [](std::string_view text) {
    return Check("$SPLITPARAMS|$GETPARAM " + std::string(text));
  };
  EXPECT_EQ(position("1"), "");
  EXPECT_EQ(position("2147483647"), "");
  EXPECT_EQ(position("2147483648"), "Fehler 2: Die Position „2147483648“ gibt es nicht, gezählt wird ab 1");
  EXPECT_EQ(position("0"), "Fehler 2: Die Position „0“ gibt es nicht, gezählt wird ab 1");
  EXPECT_EQ(position("0.99"), "Fehler 2: Die Position „0.99“ gibt es nicht, gezählt wird ab 1");
  EXPECT_EQ(position("x"), "Fehler 2: Die Position „x“ gibt es nicht, gezählt wird ab 1");
  EXPECT_EQ(position("-1"), "Fehler 2: Die Position „-1“ gibt es nicht, gezählt wird ab 1");
  EXPECT_EQ(position("99999999999"), "Fehler 2: Die Position „99999999999“ gibt es nicht, gezählt wird ab 1");
  EXPECT_EQ(position("2x"), "Hinweis 2: „2x“ ist keine Zahl, es gilt 2");
  // The position minus one is rounded.
  EXPECT_EQ(position("2.5"), "Hinweis 2: „2.5“ wird gerundet, es gilt 3");
  EXPECT_EQ(position("1.5"), "Hinweis 2: „1.5“ wird gerundet, es gilt 1");
}

TEST(RowCheck, FindsArgumentsWithoutEffect) {
  EXPECT_EQ(Check("$SILENT PERHAPS"), "Hinweis 1: „PERHAPS“ ändert nichts, wirksam sind ON und OFF");
  EXPECT_EQ(Check("$SILENT aus"), "Hinweis 1: „aus“ ändert nichts, wirksam sind ON und OFF => $SILENT OFF");
  EXPECT_EQ(Check("$AUTOLOG EIN"), "Hinweis 1: „EIN“ ändert nichts, wirksam sind ON und OFF => $AUTOLOG ON");
  EXPECT_EQ(Check("$ANSWERS NEVER"),
            "Fehler 1: Unbekannter $ Befehl: hinter $ANSWERS steht ALWAYS oder QUERIES, nicht „NEVER“");
}

TEST(RowCheck, FindsATabBeforeACommand) {
  EXPECT_EQ(Check("\t$STOP"),
            "Hinweis 1: Vor dem $ steht ein Tabulator, die Zeile geht daher an das Gerät => $STOP");
  EXPECT_EQ(Check("\tMSV?"), "");
}

TEST(RowCheck, FindsCharactersOutsideTheCodePage) {
  EXPECT_EQ(Check("' 5 €, Größe „µ“, Ÿ"), "");
  EXPECT_EQ(Check("' 5 Ω?"),
            "Hinweis 1: Das Zeichen „Ω“ gibt es in Windows-1252 nicht, gespeichert wird dafür „?“");
  EXPECT_EQ(Check("UNIT 1,→"),
            "Hinweis 1: Das Zeichen „→“ gibt es in Windows-1252 nicht, gespeichert wird dafür „?“");
  EXPECT_EQ(Check("x \xC2\x81 y"), "");
}

TEST(RowCheck, FindsNulInCommands) {
  using namespace std::string_view_literals;
  EXPECT_EQ(Check("A|B\0C|' \0"sv), "Hinweis 2: Das Zeichen „<00>“ kann nicht gesendet werden");
}

TEST(RowCheck, FindsRowsOfAFileInUtf8) {
  const std::string why = "Hinweis 1: Die Zeile ist in UTF-8 gespeichert, Befehlsdateien sind Windows-1252";
  EXPECT_EQ(Check("' GrÃ¶ÃŸe"), why + " => ' Größe");
  EXPECT_EQ(Check("' Î©"), why);
  EXPECT_EQ(Check("ï»¿MSV?"), why + " => MSV?");
  EXPECT_EQ(Check("' Ã"), "");
}

TEST(RowCheck, ShortensWordsAndShowsNoControlCharacters) {
  EXPECT_EQ(Check("$" + std::string(60, 'X')),
            "Fehler 1: Unbekannter $ Befehl „$" + std::string(47, 'X') + "…“");
  EXPECT_EQ(Check("$\x1B[2J"), "Fehler 1: Unbekannter $ Befehl „$?[2J“");
}

}  // namespace
}  // namespace kolvane::script::checker
