#include "script/texts.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace kolvane::script::texts {
namespace {

using Problem = FileResult::Problem;

TEST(ScriptTextsTest, ErrorsOfTheCommands) {
  EXPECT_EQ(kUnknownCommand, "Unbekannter $ Befehl");
  EXPECT_EQ(kNoJumpTarget, "Sprungziel nicht gefunden");
  EXPECT_EQ(kLogAlreadyOpen, "Logdatei bereits geöffnet");
  EXPECT_EQ(kNoLogOpen, "Keine Logdatei geöffnet");
  EXPECT_EQ(kNoSuchParameter, "Ungültige Parameterposition");
  EXPECT_EQ(kListFull, "Die Befehlsliste ist voll. Der Befehl wurde nicht aufgezeichnet.");
  EXPECT_EQ(kNoRoomForARow, "Die Befehlsliste ist voll. Es wurde keine Zeile eingefügt.");
  EXPECT_EQ(NotPasted(12), "Die Befehlsliste ist voll. Nicht eingefügte Zeilen: 12");
  EXPECT_EQ(ErrorInRow(17, "Überlauf"), "Fehler in Befehlsliste (Zeile 17): Überlauf");
}

TEST(ScriptTextsTest, Status) {
  EXPECT_EQ(ListStatus(""), "Befehlsliste: Unbenannt");
  EXPECT_EQ(ListStatus("C:\\x.CMD"), "Befehlsliste: C:\\x.CMD");
  EXPECT_EQ(LinesLeftOut(0), "");
  EXPECT_EQ(LinesLeftOut(1), "1 Zeile nicht geladen");
  EXPECT_EQ(LinesLeftOut(2), "2 Zeilen nicht geladen");
}

TEST(ScriptTextsTest, FailuresOfFiles) {
  EXPECT_EQ(FileFailure({Problem::kNone, "x"}), "");
  EXPECT_EQ(FileFailure({Problem::kLineTooLong, "x"}),
            "Die Befehlsliste „x“ kann nicht gelesen werden: Die Datei enthält zu lange Zeilen");
  EXPECT_EQ(FileFailure({Problem::kListRunning, "x"}),
            "Die Befehlsliste „x“ kann nicht geladen werden, solange eine Befehlsliste läuft");
  const auto reason = [](int error) {
    const std::string text = FileFailure({Problem::kCannotRead, "x", error});
    return text.substr(text.find(": ") + 2);
  };
  EXPECT_EQ(reason(ENOENT), "Datei oder Ordner nicht gefunden");
  EXPECT_EQ(reason(EACCES), "Keine Berechtigung");
  EXPECT_EQ(reason(EPERM), "Keine Berechtigung");
  EXPECT_EQ(reason(EISDIR), "Der Name bezeichnet einen Ordner");
  EXPECT_EQ(reason(ENOTDIR), "Ein Teil des Pfades ist kein Ordner");
  EXPECT_EQ(reason(ENOSPC), "Der Datenträger ist voll");
  EXPECT_EQ(reason(EDQUOT), "Der Datenträger ist voll");
  EXPECT_EQ(reason(EFBIG), "Die Datei würde zu groß");
  EXPECT_EQ(reason(EROFS), "Der Datenträger ist schreibgeschützt");
  EXPECT_EQ(reason(ENAMETOOLONG), "Der Name ist zu lang");
  EXPECT_EQ(reason(ELOOP), "Der Verweis führt im Kreis");
  EXPECT_EQ(reason(EIO), "Fehler des Datenträgers");
  EXPECT_EQ(reason(9999), "Systemfehler 9999");
}

TEST(ScriptTextsTest, SayWhichCharactersAFileCannotHold) {
  EXPECT_EQ(texts::CharactersNotInFile({7}, "Ω"),
            "Das Zeichen „Ω“ in Zeile 7 kann nicht gespeichert werden. In der Datei steht dafür „?“.");
  EXPECT_TRUE(texts::CharactersNotInFile({7, 9}, "Ω").ends_with("„?“. Ebenso in einer weiteren Zeile."));
  EXPECT_TRUE(texts::CharactersNotInFile({7, 9, 12}, "Ω").ends_with("„?“. Ebenso in 2 weiteren Zeilen."));
}

TEST(ScriptTextsTest, OfferAnUnsavedList) {
  EXPECT_EQ(texts::AbandonedList("", "21.11.2026 15:01:04", 12, 0),
            "Nicht gespeicherte Befehlsliste: 12 Zeilen vom 21.11.2026 15:01:04");
  EXPECT_EQ(texts::AbandonedList("/x/a.CMD", "21.11.2026 15:01:04", 1, 2),
            "„a.CMD“ nicht gespeichert: 1 Zeile vom 21.11.2026 15:01:04 (danach 2 weitere)");
}

}  // namespace
}  // namespace kolvane::script::texts
