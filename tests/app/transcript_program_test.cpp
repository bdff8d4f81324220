// `--transcript`, and `kolvane-amplifier --replay` of what it wrote.

#include <gtest/gtest.h>
#include <signal.h>

#include <unistd.h>

#include <filesystem>
#include <future>
#include <nlohmann/json.hpp>
#include <sstream>

#include "amplifier/server.h"
#include "app/instrument.h"
#include "app/program.h"
#include "base/descriptor.h"
#include "base/loopback.h"
#include "base/temp_folder.h"

namespace kolvane::app {
namespace {

struct TranscriptTest : testing::Test {
  std::string File() const { return folder.Path("t.jsonl"); }
  Outcome Run(const std::string& rows, const std::string& resource, std::vector<std::string> options = {}) {
    base::WriteBytes(folder.Path("a.CMD"), rows);
    options.insert(options.begin(), {"run", folder.Path("a.CMD"), "--connect", resource});
    return RunProgram(options);
  }
  static std::string ResourceOf(std::uint16_t port) {
    return "TCPIP::127.0.0.1::" + std::to_string(port) + "::SOCKET";
  }

  base::TempFolder folder;
};

/// A replay of a transcript by the program itself.
struct ReplayProgram {
  ReplayProgram(const std::string& file, const std::string& link)
      : program({"--pty", link, "--replay", file}, {.program = KOLVANE_AMPLIFIER}),
        resource("ASRL" + link + "::INSTR") {
    while (!std::filesystem::exists(link) && !program.EndsWithin(1)) {
    }
  }

  Program program;
  std::string resource;
};

TEST_F(TranscriptTest, HasEveryByteOfBothDirections) {
  Instrument instrument([](const std::string& line) { return line == "DCL" ? "" : line + "\r\n"; });
  const Outcome outcome =
      Run("A\r\nDCL\r\nB\r\n", instrument.Resource(), {"--transcript", File(), "--transcript-times", "none"});
  EXPECT_EQ(outcome.out, "A\nB\n");
  EXPECT_EQ(base::ReadBytes(File()),
            "{\"way\":\"open\",\"bytes\":\"\"}\n"
            "{\"way\":\"out\",\"bytes\":\"QQo=\"}\n"
            "{\"way\":\"in\",\"bytes\":\"QQ0K\"}\n"
            "{\"way\":\"out\",\"bytes\":\"RENMCg==\"}\n"
            "{\"way\":\"close\",\"bytes\":\"\"}\n"
            "{\"way\":\"open\",\"bytes\":\"\"}\n"
            "{\"way\":\"out\",\"bytes\":\"Qgo=\"}\n"
            "{\"way\":\"in\",\"bytes\":\"Qg0K\"}\n"
            "{\"way\":\"close\",\"bytes\":\"\"}\n");
}

// Otherwise the first file that is opened would be standard output.
TEST_F(TranscriptTest, HoldsNoAnswersWhereStandardOutputIsClosed) {
  const amplifier::ServerThread amplifier;
  RunProgram({"send", "*IDN?", "--connect", ResourceOf(amplifier.Port()), "--transcript", File()},
             {.wrapper = {"sh", "-c", "exec \"$@\" >&-", "sh"}});
  const std::string transcript = base::ReadBytes(File());
  EXPECT_NE(transcript, "");
  std::istringstream lines(transcript);
  for (std::string line; std::getline(lines, line);) EXPECT_TRUE(nlohmann::json::accept(line)) << line;
}

TEST_F(TranscriptTest, TimesRunForward) {
  const amplifier::ServerThread amplifier;
  RunProgram({"send", "*IDN?", "A", "--connect", ResourceOf(amplifier.Port()), "--transcript", File()});
  std::istringstream lines(base::ReadBytes(File()));
  double last = 0;
  int count = 0;
  for (std::string line; std::getline(lines, line); ++count) {
    const auto event = nlohmann::json::parse(line);
    EXPECT_GE(event["t"].get<double>(), last);
    last = event["t"];
    EXPECT_EQ(event["time"].get<std::string>().size(), sizeof "2026-11-21T14:01:04.123Z" - 1);
  }
  EXPECT_EQ(count, 6);
}

TEST_F(TranscriptTest, HasBytesThatNobodyRead) {
  Instrument instrument([](const std::string& line) { return line + "\r\nmore\r\n"; });
  const Outcome outcome =
      RunProgram({"send", "A", "--flush", "--connect", instrument.Resource(), "--transcript", File(),
                  "--transcript-times", "none", "--receive-mode", "count", "--count", "3"});
  EXPECT_EQ(outcome.err, "kolvane: 6 Bytes warten\n");
  EXPECT_NE(base::ReadBytes(File()).find("{\"way\":\"in\",\"bytes\":\"bW9yZQ0K\"}\n{\"way\":\"close\""),
            std::string::npos);
}

TEST_F(TranscriptTest, IsWholeWhenTheProgramIsKilled) {
  Instrument instrument(Echo);
  Program program({"send", "A", "--every", "1", "--connect", instrument.Resource(), "--transcript", File()});
  instrument.AwaitLines(20);
  program.Signal(SIGKILL);
  program.Wait();
  const std::string text = base::ReadBytes(File());
  ASSERT_TRUE(text.ends_with("}\n"));
  std::istringstream lines(text);
  int out = 0;
  for (std::string line; std::getline(lines, line);) out += nlohmann::json::parse(line)["way"] == "out";
  EXPECT_GE(out, 19);
}

TEST_F(TranscriptTest, WithoutItsFileNothingIsSent) {
  Instrument instrument(Echo);
  const Outcome outcome = Run("A\r\n", instrument.Resource(), {"--transcript", folder.Path("no/t")});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "kolvane: cannot write the transcript '" + folder.Path("no/t") +
                             "': No such file or directory\n");
  EXPECT_TRUE(instrument.lines().empty());
}

TEST_F(TranscriptTest, AFullDiskIsReportedOnceAndTheRunContinues) {
  Instrument instrument(Echo);
  const Outcome outcome = Run("A\r\nB\r\n", instrument.Resource(), {"--transcript", "/dev/full"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "A\nB\n");
  EXPECT_EQ(outcome.err,
            "kolvane: Die Mitschrift „/dev/full“ kann nicht geschrieben werden: Der Datenträger ist voll.\n");
}

TEST_F(TranscriptTest, AFileAtItsLimitHasWholeLinesAndCanBeReplayed) {
  Instrument instrument(Echo);
  std::vector<std::string> words = {
      "send",         "--connect", instrument.Resource(), "--repeat", "100", "0123456789",
      "--transcript", File(),      "--transcript-times",  "none"};
  const Outcome outcome = RunProgram(words, {.wrapper = {"prlimit", "--fsize=3000"}});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 100);
  EXPECT_TRUE(outcome.err.ends_with(" kann nicht geschrieben werden: Die Datei würde zu groß.\n"))
      << outcome.err;
  const std::string text = base::ReadBytes(File());
  EXPECT_GT(text.size(), 2900u);
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) EXPECT_TRUE(nlohmann::json::accept(line)) << line;
  EXPECT_TRUE(text.ends_with("}\n"));
}

constexpr char kRows[] =
    "*IDN?\r\nMSV? 1-3\r\nRES\r\nRAMP? 300\r\nNAME 1,Br\xFC"
    "cke\r\nNAME? 1\r\n";

TEST_F(TranscriptTest, AListIsTestedWithoutItsInstrument) {
  const amplifier::ServerThread amplifier;
  const Outcome recorded =
      Run(kRows, ResourceOf(amplifier.Port()), {"--transcript", File(), "--receive-mode", "auto"});
  ASSERT_EQ(recorded.status, 0) << recorded.err;
  ReplayProgram replay(File(), folder.Path("line"));
  const Outcome replayed = Run(kRows, replay.resource, {"--receive-mode", "auto"});
  EXPECT_EQ(replayed.out, recorded.out);
  const Outcome verdict = replay.program.Wait();
  EXPECT_EQ(verdict.err, "");
  EXPECT_EQ(verdict.status, 0);
}

/// Reads one line on each of two connections: closes the first one, answers on the second.
void ServeTwice(const base::Listener& listener) {
  for (const bool closes : {true, false}) {
    const base::Descriptor peer(listener.Accept());
    std::string line;
    for (char byte = 0; !line.ends_with('\n') && read(peer.get(), &byte, 1) == 1;) line += byte;
    if (closes) continue;
    EXPECT_EQ(base::WriteAll(peer.get(), "back\r\n"), 0);
    char byte = 0;
    EXPECT_EQ(read(peer.get(), &byte, 1), 0) << "the terminal closes";
  }
}

TEST_F(TranscriptTest, AnInstrumentThatClosesIsReplayed) {
  const std::string rows = "LAST\r\nAGAIN?\r\n";
  const base::Listener listener;
  auto served = std::async(std::launch::async, [&listener] { ServeTwice(listener); });
  const Outcome recorded = Run(rows, ResourceOf(listener.port()), {"--transcript", File(), "--reconnect"});
  served.get();
  EXPECT_EQ(recorded.out, "-40\nback\n");
  EXPECT_NE(base::ReadBytes(File()).find(R"("way":"close","bytes":"","status":-40)"), std::string::npos);
  ReplayProgram replay(File(), folder.Path("line"));
  const Outcome replayed = Run(rows, replay.resource, {"--reconnect"});
  EXPECT_EQ(replayed.out, "-41\nback\n") << "a serial line has no orderly end";
  EXPECT_EQ(replayed.status, 4);
  const Outcome verdict = replay.program.Wait();
  EXPECT_EQ(verdict.err, "");
  EXPECT_EQ(verdict.status, 0);
}

TEST_F(TranscriptTest, TheFirstCommandThatDiffersIsNamed) {
  const amplifier::ServerThread amplifier;
  Run("*IDN?\r\nMSV? 1\r\n", ResourceOf(amplifier.Port()), {"--transcript", File()});
  ReplayProgram replay(File(), folder.Path("line"));
  Run("*IDN?\r\nMSV? 2\r\nMSV? 3\r\n", replay.resource, {"--timeout", "50"});
  const Outcome verdict = replay.program.Wait();
  EXPECT_EQ(verdict.status, 1);
  EXPECT_EQ(verdict.err, "kolvane-amplifier: " + File() + ":4: expected \"MSV? 1\\n\", got \"MSV? 2\\n\"\n");
}

TEST_F(TranscriptTest, AnInvalidTranscriptIsWrongUsage) {
  base::WriteBytes(File(), "A\r\n");
  const Outcome outcome = RunProgram({"--tcp", "0", "--replay", File()}, {.program = KOLVANE_AMPLIFIER});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "kolvane-amplifier: " + File() + ":1: not a line of a transcript: not JSON\n");
}

}  // namespace
}  // namespace kolvane::app
