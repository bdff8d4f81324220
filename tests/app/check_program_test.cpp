// `kolvane check`, the real program.

#include <fcntl.h>
#include <gtest/gtest.h>

#include "app/program.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

class CheckProgram : public testing::Test {
 protected:
  Outcome Check(std::vector<std::string> arguments, int output = -1) {
    arguments.insert(arguments.begin(), "check");
    return RunProgram(arguments, {.folder = folder_.path(), .output = output});
  }

  base::TempFolder folder_;
};

TEST_F(CheckProgram, PrintsNothingForACorrectList) {
  folder_.Write("good.CMD", "*IDN?\r\n$REPEAT 2\r\nMSV? 1\r\n$ENDREPEAT\r\n");
  const Outcome outcome = Check({"good.CMD"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(CheckProgram, NamesFilesAsTheyWereGiven) {
  folder_.Write("odd.CMD", "X?\r\n$STOP now\r\n");
  folder_.Write("w\xC3\xB6rter.CMD", "$REPAET 3\r\nX?\r\n$ENDREPEAT\r\n");
  const Outcome outcome = Check({"./odd.CMD", "w\xC3\xB6rter.CMD", "odd.CMD"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out,
            "./odd.CMD:2: Hinweis: „now“ wird nicht beachtet\n"
            "wörter.CMD:1: Fehler: Unbekannter $ Befehl „$REPAET“, gemeint ist wohl „$REPEAT 3“\n"
            "odd.CMD:2: Hinweis: „now“ wird nicht beachtet\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(CheckProgram, HintsAreNotErrors) {
  folder_.Write("odd.CMD", "$STOP\r\nX?\r\n");
  const Outcome outcome = Check({"odd.CMD"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "odd.CMD:2: Hinweis: Die Zeile wird nie erreicht\n");
}

TEST_F(CheckProgram, ReportsListsThatCannotBeRead) {
  folder_.Write("wrong.CMD", "$FOO\r\n");
  folder_.Write("long.CMD", std::string((1 << 20) + 1, 'x'));
  const Outcome outcome = Check({"missing.CMD", "wrong.CMD", "long.CMD"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "wrong.CMD:1: Fehler: Unbekannter $ Befehl „$FOO“\n");
  EXPECT_EQ(outcome.err,
            "kolvane: cannot read the command list 'missing.CMD': No such file or directory\n"
            "kolvane: cannot read the command list 'long.CMD': a line is too long for a command file\n");
}

TEST_F(CheckProgram, ReportsLinesBeyondTheList) {
  std::string lines;
  for (int row = 1; row <= 1024; ++row) lines += "X?\r\n";
  folder_.Write("full.CMD", lines);
  folder_.Write("one.CMD", lines + "X?\r\n");
  folder_.Write("two.CMD", lines + "X?\r\nX?\r\n");
  const Outcome outcome = Check({"full.CMD", "one.CMD", "two.CMD"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "one.CMD:1025: Hinweis: Die Zeile 1025 hat in der Befehlsliste keinen Platz\n"
            "two.CMD:1025: Hinweis: Die Zeilen 1025 bis 1026 haben in der Befehlsliste keinen Platz\n");
}

TEST_F(CheckProgram, ReadsFilesAsACommandListDoes) {
  folder_.Write("utf8.CMD",
                "' Gr\xC3\xB6\xC3\x9F"
                "e\n");
  folder_.Write("cp1252.CMD",
                "' Gr\xF6\xDF"
                "e\n$GOTO \xC4\n\xE4:\n");
  const Outcome outcome = Check({"utf8.CMD", "cp1252.CMD"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "utf8.CMD:1: Hinweis: Die Zeile ist in UTF-8 gespeichert, Befehlsdateien sind Windows-1252\n");
}

TEST_F(CheckProgram, ALogMayBeOpenBeforeTheList) {
  folder_.Write("log.CMD", "$WRITELOG x\r\n$CLOSELOG\r\n$WRITELOG y\r\n");
  const Outcome outcome = Check({"log.CMD"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out,
            "log.CMD:1: Hinweis: Keine Logdatei geöffnet, falls nicht schon vor dem Ablauf eine offen ist\n"
            "log.CMD:3: Fehler: Keine Logdatei geöffnet\n");
}

TEST_F(CheckProgram, ReportsWrongUsage) {
  const Outcome outcome = Check({});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "kolvane: check needs a command list (see kolvane --help)\n");
}

TEST_F(CheckProgram, FailsIfStandardOutputIsFull) {
  folder_.Write("wrong.CMD", "$FOO\r\n");
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  ASSERT_GE(full, 0);
  EXPECT_EQ(Check({"wrong.CMD"}, full).status, 1);
  close(full);
}

// The window itself needs a display: see the tests of the component.
TEST_F(CheckProgram, AListThatTheWindowCannotReadIsOneLine) {
  for (const char* name : {"nowhere.CMD", "./nowhere"}) {
    const Outcome outcome = RunProgram({name}, {.folder = folder_.path()});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "kolvane: cannot read the command list '" + std::string(name) +
                               "': No such file or directory\n");
  }
}

}  // namespace
}  // namespace kolvane::app
