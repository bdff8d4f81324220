// `kolvane run` and `kolvane send`, the real program against instruments on real sockets and lines.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <filesystem>

#include "amplifier/server.h"
#include "app/instrument.h"
#include "app/program.h"
#include "base/pattern.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

struct RunProgramTest : testing::Test {
  std::string List(const std::string& rows) const {
    base::WriteBytes(folder.Path("a.CMD"), rows);
    return folder.Path("a.CMD");
  }
  std::string Amplifier() const {
    return "TCPIP::localhost::" + std::to_string(amplifier.Port()) + "::SOCKET";
  }
  Outcome Run(const std::string& rows, std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"run", List(rows), "--connect", Amplifier()});
    return RunProgram(options, {.folder = folder.Path("")});
  }
  Outcome Send(std::vector<std::string> words) const {
    words.insert(words.begin(), {"send", "--connect", Amplifier()});
    return RunProgram(words, {.folder = folder.Path("")});
  }

  base::TempFolder folder;
  amplifier::ServerThread amplifier;
};

void ExpectDone(const Outcome& outcome, const std::string& out, const std::string& err = "") {
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, out);
  EXPECT_EQ(outcome.err, err);
}

constexpr char kStopped[] = "kolvane: Die laufende Meßwerterfassung wurde beendet\n";
constexpr char kLocal[] = "kolvane: GO TO LOCAL ausgeführt - die Verbindung wurde getrennt\n";

TEST_F(RunProgramTest, PrintsOnlyAnswers) {
  ExpectDone(Run("'comment\r\nECHO eins\r\n\r\n$REPEAT 1\r\nECHO zwei\r\n$ENDREPEAT"), "eins\nzwei\nzwei\n");
  ExpectDone(Send({"ECHO eins", "ECHO zwei"}), "eins\nzwei\n");
}

TEST_F(RunProgramTest, PrintsCommandsOnRequest) {
  ExpectDone(Run("  ECHO eins \r\n$DELAY 0\r\n", {"--show-commands"}), "ECHO eins\neins\n");
  ExpectDone(Send({"ECHO eins", "--show-commands"}), "ECHO eins\neins\n");
}

TEST_F(RunProgramTest, PrintsRecordsOnRequest) {
  const std::string rows = "$SILENT ON\r\nECHO 1,2.50\r\nECHO x\r\nSTP\r\n";
  const base::Pattern local("\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}");
  const Outcome csv = Run(rows, {"--format", "csv"});
  EXPECT_EQ(local.Replaced(csv.out, "T"),
            "time,command,status,answer\n"
            "T,\"ECHO 1,2.50\",0,\"1,2.50\"\nT,ECHO x,0,x\nT,STP,0,\n");
  const Outcome numbers = Run(rows, {"--format", "csv", "--fields", "3", "--show-commands"});
  EXPECT_EQ(local.Replaced(numbers.out, "T"),
            "time,command,field1,field2,field3\nT,\"ECHO 1,2.50\",1,2.5,\n");
  const Outcome json = Send({"ECHO 1,2.50", "--format", "json"});
  const base::Pattern utc("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z");
  EXPECT_EQ(utc.Replaced(json.out, "T"),
            "{\"time\":\"T\",\"command\":\"ECHO "
            "1,2.50\",\"status\":0,\"answer\":\"1,2.50\",\"fields\":[1.0,2.5]}\n");
  EXPECT_EQ(csv.err, kStopped);
  EXPECT_EQ(numbers.err, kStopped);
  EXPECT_EQ(json.err, "");
}

TEST_F(RunProgramTest, ARunWithoutAConnectionPrintsNoRecord) {
  const Outcome outcome =
      RunProgram({"send", "A", "--connect", "TCPIP::localhost::1::SOCKET", "--format", "csv"}, {});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
}

TEST_F(RunProgramTest, AnEmptyCommandIsOnlyTheTerminator) {
  Instrument instrument([](const std::string& line) { return "<" + line + ">\r\n"; });
  ExpectDone(RunProgram({"send", "", "A", "--connect", instrument.Resource()}), "<>\n<A>\n");
}

TEST_F(RunProgramTest, PrintsTimesAfterAnswers) {
  const base::Pattern expected("eins\\(dt = [0-9.,E-]+ ms\\)\nzwei\\(dt = [0-9.,E-]+ ms\\)\n");
  const Outcome run = Run("ECHO eins\r\nSTP\r\nECHO zwei\r\n", {"--show-times"});
  EXPECT_TRUE(expected.Matches(run.out)) << run.out;
  const Outcome sent = Send({"ECHO eins", "STP", "ECHO zwei", "--show-times"});
  EXPECT_TRUE(expected.Matches(sent.out)) << sent.out;
}

TEST_F(RunProgramTest, TextsAreUtf8ButNotTheInstruments) {
  ExpectDone(Run("NAME 1,Br\xFC"
                 "cke\r\nNAME? 1\r\n"),
             "0\nBrücke\n");
  ExpectDone(Send({"NAME 1,Brücke", "NAME? 1"}), "0\nBrücke\n");
}

TEST_F(RunProgramTest, AListMayJumpBranchAndStaySilent) {
  ExpectDone(
      Run("$SILENT ON\r\nECHO a,b\r\n$SILENT OFF\r\n$SPLITPARAMS\r\n$GETPARAM 2\r\n$IFEQUAL b\r\nECHO ja\r\n"
          "$ENDIF\r\n$CLEAR\r\n$GOTO end\r\nECHO nein\r\nend:\r\n"),
      "ja\n");
}

TEST_F(RunProgramTest, ReportsTheConnectionOnRequest) {
  const Outcome quiet = Send({"STP", "DCL", "ECHO wieder"});
  ExpectDone(quiet, "wieder\n", std::string(kStopped) + kLocal);
  const Outcome verbose = Send({"STP", "DCL", "ECHO wieder", "--verbose"});
  EXPECT_EQ(verbose.out, "wieder\n");
  const std::string port = std::to_string(amplifier.Port());
  const std::string on = "kolvane: .*  Verbindung hergestellt mit TCP/IP: localhost, Port " + port + "\n";
  const std::string off = "kolvane: .*  Verbindung getrennt von TCP/IP: localhost, Port " + port + "\n";
  EXPECT_TRUE(base::Pattern(on + "kolvane: Die laufende Meßwerterfassung wurde beendet\n" + off +
                            "kolvane: GO TO LOCAL ausgeführt - die Verbindung wurde getrennt\n" + on + off)
                  .Matches(verbose.err))
      << verbose.err;
  EXPECT_NE(Run("STP\r\n", {"--verbose"}).err.find("Meßwerterfassung"), std::string::npos);
}

TEST_F(RunProgramTest, ReceivesInEveryMode) {
  ExpectDone(Send({"HEX? 41420D0A43", "--receive-mode", "auto"}), "AB\nC\n");
  ExpectDone(Send({"HEX? 410D0A", "--binary"}), "<41><0D><0A>\n");
  ExpectDone(Send({"RAMP? 3", "--binary", "--count", "3"}), "<00><01><02>\n");
  ExpectDone(Send({"HEX? 000102FF", "--count", "4"}), std::string("\0\1\2ÿ\n", 6));
  ExpectDone(Send({"HEX? 613B", "--receive-terminator", "59"}), "a\n");
}

TEST_F(RunProgramTest, AFailedAnswerIsPrintedAndCounts) {
  const Outcome late = Send({"WAIT? 2000", "--timeout", "30"});
  EXPECT_EQ(late.status, 4);
  EXPECT_TRUE(base::Pattern("-[0-9]+\n").Matches(late.out)) << late.out;
  EXPECT_EQ(late.err, "kolvane: -30: keine Antwort innerhalb von 30 ms\n");
  const Outcome run = Run("WAIT? 2000\r\n$STOP\r\n", {"--timeout", "30"});
  EXPECT_EQ(run.status, 4);
  EXPECT_EQ(run.out, late.out);
}

TEST_F(RunProgramTest, ARefusalIsAnAnswer) { ExpectDone(Send({"NONSENSE"}), "?\n"); }

TEST_F(RunProgramTest, AnErrorInTheListStopsIt) {
  const Outcome outcome = Run("ECHO eins\r\n$REPAET 3\r\nECHO zwei\r\n");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "eins\n");
  EXPECT_EQ(outcome.err, "kolvane: Fehler in Befehlsliste (Zeile 2): Unbekannter $ Befehl\n");
}

TEST_F(RunProgramTest, AnErrorInTheListHasPriorityOverAFailedAnswer) {
  EXPECT_EQ(Run("WAIT? 2000\r\n$NONSENSE\r\n", {"--timeout", "30"}).status, 1);
}

TEST_F(RunProgramTest, AListThatCannotBeReadIsWrongUsage) {
  const Outcome outcome = RunProgram({"run", "none.CMD", "--connect", "OFFLINE"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "kolvane: cannot read the command list 'none.CMD': No such file or directory\n");
}

TEST_F(RunProgramTest, WrongUsageIsOneLine) {
  const Outcome option = RunProgram({"send", "X", "--bogus"});
  EXPECT_EQ(option.status, 2);
  EXPECT_EQ(option.err, "kolvane: unknown option '--bogus' (see kolvane --help)\n");
  const Outcome resource = RunProgram({"send", "X", "--connect", "LPT3"});
  EXPECT_EQ(resource.status, 2);
  EXPECT_EQ(
      resource.err,
      "kolvane: bad RESOURCE 'LPT3': it is neither HOST:PORT nor /dev/NODE, and starts with none of TCPIP, "
      "ASRL, USB, GPIB, LPT1, LPT2 and OFFLINE\n");
}

TEST_F(RunProgramTest, NoConnectionIsOneLineAndNothingIsSent) {
  for (const char* resource : {"TCPIP::127.0.0.1::1::SOCKET", "ASRL/nonexistent::INSTR", "GPIB0::5::INSTR"}) {
    const Outcome outcome = RunProgram({"send", "A", "B", "--connect", resource, "--show-commands"});
    EXPECT_EQ(outcome.status, 3) << resource;
    EXPECT_EQ(outcome.out, "");
    EXPECT_TRUE(base::Pattern("kolvane: Fehler beim Verbindungsaufbau: .*\n").Matches(outcome.err))
        << outcome.err;
  }
}

TEST_F(RunProgramTest, AnInstrumentThatDisappearsIsAFailedAnswer) {
  Instrument instrument(Echo);
  const Outcome outcome =
      RunProgram({"send", "DCL", "A", "--connect", instrument.Resource(), "--timeout", "5000"});
  ExpectDone(outcome, "A\n", kLocal);
  amplifier::Options options;
  options.behaviour.close_after = 1;
  const amplifier::ServerThread leaving(options);
  const Outcome left = RunProgram({"send", "ECHO a", "ECHO b", "ECHO c", "--connect",
                                   "TCPIP::127.0.0.1::" + std::to_string(leaving.Port()) + "::SOCKET"});
  EXPECT_EQ(left.status, 4);
  EXPECT_TRUE(left.out.starts_with("a\n-")) << left.out;
}

TEST_F(RunProgramTest, AConnectionLostAtTheEndIsNotRestored) {
  amplifier::Options options;
  options.behaviour.close_mid_answer = 1;
  const amplifier::ServerThread leaving(options);
  const Outcome left =
      RunProgram({"send", "ECHO a", "--connect", "127.0.0.1:" + std::to_string(leaving.Port()), "--reconnect",
                  "--verbose"});
  EXPECT_EQ(left.status, 4);
  EXPECT_TRUE(base::Pattern("kolvane: .* Verbindung hergestellt mit .*\n"
                            "kolvane: -40: Verbindung vom Gerät geschlossen\n"
                            "kolvane: 1 Byte wartet\n"
                            "kolvane: .* Verbindung getrennt von .*\n")
                  .Matches(left.err))
      << left.err;
}

TEST_F(RunProgramTest, TheTestModeNeedsNoInstrument) {
  const Outcome outcome = RunProgram({"send", "X", "--connect", "offline"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.starts_with("Test mode answer at ")) << outcome.out;
}

TEST_F(RunProgramTest, TheStoredConnectionIsUsedAndNotChanged) {
  const std::string settings = folder.Path("Kolvane/Kolvane.ini");
  std::filesystem::create_directory(folder.Path("Kolvane"));
  const std::string text = "[PORT]\nPORT=8\nIPADDRESS=127.0.0.1\nIPPORT=" + std::to_string(amplifier.Port()) +
                           "\n[TERMINAL]\nRCVMODE=1\nRCVTERM=\nSHOWCOMMANDS=-1\n";
  base::WriteBytes(settings, text);
  const LaunchOptions options{.environment = {{"XDG_CONFIG_HOME", folder.Path("")}}};
  ExpectDone(RunProgram({"send", "HEX? 41", "--timeout", "1000"}, options), "A\n");
  ExpectDone(RunProgram({"send", "ECHO a", "--receive-mode", "terminator"}, options), "a\n");
  ExpectDone(RunProgram({"run", List("HEX? 41\r\n"), "--folder", folder.Path("")}, options), "A\n");
  EXPECT_EQ(base::ReadBytes(settings), text);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path("Kolvane")), {}), 1);
}

TEST_F(RunProgramTest, AStoredSettingThatCannotBeReadIsWrongUsage) {
  std::filesystem::create_directory(folder.Path("Kolvane"));
  base::WriteBytes(folder.Path("Kolvane/Kolvane.ini"), "[PORT]\nPORT=four\n");
  const Outcome outcome = RunProgram({"send", "X"}, {.environment = {{"XDG_CONFIG_HOME", folder.Path("")}}});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "kolvane: Die gespeicherte Einstellung [PORT] PORT=four kann nicht gelesen werden: Typen "
            "unverträglich (Datei „" +
                folder.Path("Kolvane/Kolvane.ini") + "“)\n");
}

TEST_F(RunProgramTest, ASerialLineIsNamedByItsDevice) {
  amplifier::Options options;
  options.pty_link = folder.Path("amp");
  const amplifier::ServerThread serial(options);
  ExpectDone(RunProgram({"send", "ECHO a", "--connect", "ASRL" + folder.Path("amp") + "::INSTR", "--baud",
                         "19200", "--parity", "none"}),
             "a\n");
  ExpectDone(RunProgram({"send", "ECHO a", "--connect", "ASRL1::INSTR"},
                        {.environment = {{"KOLVANE_COM1", folder.Path("amp")}}}),
             "a\n");
}

TEST_F(RunProgramTest, LinesBeyondTheLastRowAreCounted) {
  std::string rows;
  for (int row = 0; row < 1024; ++row) rows += "'\n";
  EXPECT_EQ(Run(rows).err, "");
  const Outcome outcome = Run(rows + "ECHO no\nECHO no\n");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "kolvane: '" + folder.Path("a.CMD") + "' is longer than 1024 lines, left out: 2\n");
}

TEST_F(RunProgramTest, TheLogHasEachLineOfTheRun) {
  base::WriteBytes(folder.Path("run.LOG"), "old\r\n");
  ExpectDone(Send({"NAME 1,Brücke", "STP", "NAME? 1", "--show-commands", "--log", "run.LOG"}),
             "NAME 1,Brücke\n0\nSTP\nNAME? 1\nBrücke\n", kStopped);
  EXPECT_EQ(base::ReadBytes(folder.Path("run.LOG")),
            "old\r\nNAME 1,Br\xFC"
            "cke\r\n0\r\nSTP\r\nDie laufende Me\xDFwerterfassung wurde beendet\r\n"
            "NAME? 1\r\nBr\xFC"
            "cke\r\n");
}

TEST_F(RunProgramTest, AListMayWriteItsOwnLog) {
  ExpectDone(Run("$OPENLOG \"x.LOG\"\r\n$AUTOLOG ON\r\nECHO a\r\n$WRITELOG b\r\n$CLOSELOG\r\nECHO c\r\n"),
             "a\nc\n");
  EXPECT_EQ(base::ReadBytes(folder.Path("x.LOG")), "a\r\nb\r\n");
}

TEST_F(RunProgramTest, ALogThatCannotBeWrittenIsOneLineAndTheRunContinues) {
  for (const char* log : {"/dev/full", "/nonexistent/a.LOG"}) {
    const Outcome outcome = Run("ECHO a\r\nECHO b\r\n", {"--log", log});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "a\nb\n");
    EXPECT_TRUE(base::Pattern("kolvane: .*" + std::string(log) + ".*\n").Matches(outcome.err)) << outcome.err;
  }
}

TEST_F(RunProgramTest, AnotherPortLibraryMayBeMissing) {
  const Outcome outcome = RunProgram({"send", "X", "--connect", "LPT1"},
                                     {.environment = {{"KOLVANE_PORT_LIBRARY", "/nonexistent/lib.so"}}});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_NE(outcome.err.find("/nonexistent/lib.so"), std::string::npos);
}

TEST_F(RunProgramTest, ASerialPortClosedAtOpeningIsNoConnection) {
  const Outcome outcome = RunProgram({"send", "A", "--connect", "ASRL1::INSTR", "--show-commands"},
                                     {.environment = {{"KOLVANE_PORT_LIBRARY", KOLVANE_TIMELESS_LIBRARY}}});
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "kolvane: Fehler beim Verbindungsaufbau: -7 (-7)\n");
  const Outcome verbose = RunProgram({"send", "A", "--connect", "ASRL1::INSTR", "--verbose"},
                                     {.environment = {{"KOLVANE_PORT_LIBRARY", KOLVANE_TIMELESS_LIBRARY}}});
  EXPECT_EQ(verbose.err, outcome.err) << "neither made nor closed";
}

TEST_F(RunProgramTest, ALibraryThatTakesNoNodeIsNoConnection) {
  const LaunchOptions plain = {.environment = {{"KOLVANE_PORT_LIBRARY", KOLVANE_PLAIN_LIBRARY}}};
  const Outcome outcome = RunProgram({"send", "A", "--connect", "ASRL/dev/ttyUSB0::INSTR"}, plain);
  EXPECT_EQ(outcome.status, 3);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err,
            "kolvane: Fehler beim Verbindungsaufbau: Die Portbibliothek kann die Gerätedatei "
            "„/dev/ttyUSB0“ nicht öffnen: Funktion QDX_SetNode fehlt. (-904)\n");
  EXPECT_EQ(RunProgram({"send", "STP", "--connect", "ASRL1::INSTR"}, plain).status, 0);
}

TEST_F(RunProgramTest, WithNoDisplayTheDemoRunsItsList) {
  const Outcome outcome = RunProgram({"--demo"}, {.folder = folder.Path("")});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.out.starts_with("*IDN?\nKOLVANE,")) << outcome.out;
  EXPECT_EQ(
      outcome.err,
      std::string("kolvane: no display, so the demo's command list runs without a window\n") + kStopped);
  EXPECT_EQ(folder.Names(), std::vector<std::string>{});
}

class DemoTest : public RunProgramTest {
 protected:
  DemoTest() {
    for (const char* name : {"current", "temporary"}) std::filesystem::create_directory(folder.Path(name));
  }

  // Without a runtime folder, Qt creates one below TMPDIR and reports what the platform lacks.
  LaunchOptions Offscreen() const {
    return {.folder = folder.Path("current"),
            .environment = {{"QT_QPA_PLATFORM", "offscreen"},
                            {"QT_LOGGING_RULES", "default.warning=false"},
                            {"TMPDIR", folder.Path("temporary")},
                            {"XDG_RUNTIME_DIR", folder.path()}}};
  }
  bool IsEmpty(const char* name) const { return std::filesystem::is_empty(folder.Path(name)); }
};

TEST_F(DemoTest, ChangesNothingInTheCurrentFolderAndLeavesNoFiles) {
  Program demo({"--demo"}, Offscreen());
  const std::string own = demo.AwaitFolderIn(folder.Path("temporary"));
  EXPECT_TRUE(std::filesystem::exists(own + "/demo.CMD"));
  base::WriteBytes(own + "/demo.LOG", "as the list writes it");
  demo.Signal(SIGTERM);
  const Outcome outcome = demo.Wait();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(IsEmpty("current"));
  EXPECT_TRUE(IsEmpty("temporary"));
}

TEST_F(DemoTest, KeepsFilesThatTheUserSavesInItsFolder) {
  Program demo({"--demo"}, Offscreen());
  const std::string own = demo.AwaitFolderIn(folder.Path("temporary"));
  base::WriteBytes(own + "/mine.CMD", "*IDN?");
  demo.Signal(SIGTERM);
  const Outcome outcome = demo.Wait();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "kolvane: what was saved in the demo stays in " + own + "\n");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(own), {}), 1);
}

TEST_F(DemoTest, TheFolderThatIsNamedIsTheComponents) {
  std::filesystem::create_directory(folder.Path("current/own"));
  Program demo({"--demo", "--folder", "own"}, Offscreen());
  demo.AwaitFolderIn(folder.Path("temporary"));
  demo.Signal(SIGTERM);
  EXPECT_EQ(demo.Wait().status, 0);
  EXPECT_TRUE(std::filesystem::exists(folder.Path("current/own/IPADDR.INI")));
  EXPECT_TRUE(IsEmpty("temporary"));
}

TEST_F(RunProgramTest, AFailedAnswerIsExplainedOnStandardError) {
  Instrument silent([](const std::string&) { return std::string(); });
  const Outcome outcome = RunProgram({"send", "A", "--timeout", "100", "--connect", silent.Resource()});
  EXPECT_EQ(outcome.status, 4);
  EXPECT_EQ(outcome.out, "-30\n");
  EXPECT_EQ(outcome.err, "kolvane: -30: keine Antwort innerhalb von 100 ms\n");
  EXPECT_EQ(RunProgram({"send", "A", "--timeout", "100", "--no-errors", "--connect", silent.Resource()}).out,
            "");
}

TEST_F(RunProgramTest, ACommandWithoutAQuestionMarkMayHaveNoAnswer) {
  Instrument instrument(
      [](const std::string& line) { return line.ends_with('?') ? "5\r\n" : std::string(); });
  ExpectDone(
      RunProgram({"send", "VOLT 5", "VOLT?", "--answers", "queries", "--connect", instrument.Resource()}),
      "5\n");
  ExpectDone(RunProgram({"run", List("$ANSWERS QUERIES\r\nVOLT 5\r\nVOLT?\r\n"), "--connect",
                         instrument.Resource()}),
             "5\n");
}

TEST_F(RunProgramTest, BytesThatWaitAtTheEndAreReported) {
  Instrument chatty([](const std::string&) { return std::string("1\r\n2\r\n"); });
  const Outcome outcome = RunProgram({"send", "A", "--connect", chatty.Resource()});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "1\n");
  EXPECT_EQ(outcome.err, "kolvane: 3 Bytes warten\n");
  ExpectDone(RunProgram({"run", List("A\r\n$READ\r\n"), "--connect", chatty.Resource()}), "1\n2\n");
}

TEST_F(RunProgramTest, AWordThatEndsAnExchangeIsReportedUnlessWordsAreOff) {
  Instrument instrument([](const std::string&) { return std::string("7\r\n"); });
  const Outcome outcome = RunProgram({"send", "STP?", "--connect", instrument.Resource()});
  EXPECT_EQ(outcome.out, "");
  EXPECT_TRUE(outcome.err.starts_with("kolvane: Die laufende Meßwerterfassung wurde beendet\n"))
      << outcome.err;
  ExpectDone(RunProgram({"send", "PRES?", "--no-device-words", "--connect", instrument.Resource()}), "7\n");
}

TEST_F(RunProgramTest, BlocksAndUtf8) {
  Instrument instrument([](const std::string& line) {
    return line == "B?" ? std::string("#15a\r\nbc\r\n") : "Ω " + line + "\r\n";
  });
  ExpectDone(RunProgram({"send", "B?", "Ω?", "--blocks", "--utf8", "--connect", instrument.Resource()}),
             "#15a\nbc\nΩ Ω?\n");
}

TEST_F(RunProgramTest, AShortNameIsEnough) {
  Instrument instrument([](const std::string&) { return std::string("7\r\n"); });
  ExpectDone(RunProgram({"send", "A", "--connect", "127.0.0.1:" + std::to_string(instrument.port())}), "7\n");
}

}  // namespace
}  // namespace kolvane::app
