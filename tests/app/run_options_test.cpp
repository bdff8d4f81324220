#include <gtest/gtest.h>

#include "app/command_options.h"
#include "app/parse.h"

namespace kolvane::app {
namespace {

using Words = std::vector<std::string>;

CommandRunOptions ParseRun(Words options) {
  options.insert(options.begin(), {"send", "X"});
  const Options parsed = Parse(options);
  EXPECT_EQ(parsed.error, "");
  EXPECT_EQ(parsed.words, Words{"X"});
  return parsed.run;
}

std::string Refusal(Words options) {
  options.insert(options.begin(), {"send", "X"});
  return Parse(options).error;
}

TEST(RunOptions, RunTakesOneList) {
  const Options options = Parse({"run", "a.CMD", "--connect", "OFFLINE"});
  EXPECT_EQ(options.action, Options::Action::kRun);
  EXPECT_EQ(options.words, Words{"a.CMD"});
  EXPECT_EQ(options.run.Connect, "OFFLINE");
  EXPECT_EQ(Parse({"run"}).error, "run needs a command list");
  EXPECT_EQ(Parse({"run", "a", "b"}).error, "run takes one command list");
}

TEST(RunOptions, SendTakesCommandsAndOptionsInAnyOrder) {
  const Options options = Parse({"send", "A", "--verbose", "B C", "--binary", "--", "--D", "-5"});
  EXPECT_EQ(options.action, Options::Action::kSend);
  EXPECT_EQ(options.words, (Words{"A", "B C", "--D", "-5"}));
  EXPECT_TRUE(options.run.Verbose);
  EXPECT_TRUE(options.run.Binary);
  EXPECT_EQ(Parse({"send"}).error, "send needs a command");
  EXPECT_EQ(Parse({"send", "--verbose"}).error, "send needs a command");
}

TEST(RunOptions, ASingleDashIsStandardInput) {
  EXPECT_TRUE(ReadsCommands(Parse({"send", "-", "--verbose"})));
  EXPECT_FALSE(ReadsCommands(Parse({"send", "A"})));
  EXPECT_FALSE(ReadsCommands(Parse({"run", "-"})));
  EXPECT_EQ(Parse({"send", "A", "-"}).error,
            "- stands for the commands of standard input and takes no others");
  for (const char* option : {"--repeat", "--every"})
    EXPECT_EQ(Parse({"send", "-", option, "2"}).error,
              "--repeat and --every need commands, not standard input");
}

TEST(RunOptions, TakeRepetitions) {
  EXPECT_FALSE(ParseRun({}).Repeat || ParseRun({}).EveryMs);
  EXPECT_EQ(ParseRun({"--repeat", "3"}).Repeat, 3);
  EXPECT_EQ(ParseRun({"--repeat", "1"}).Repeat, 1);
  EXPECT_EQ(ParseRun({"--every", "2147483647"}).EveryMs, 2147483647);
  EXPECT_EQ(Refusal({"--repeat", "0"}), "--repeat takes a number of times from 1, not '0'");
  EXPECT_EQ(Refusal({"--every", "0"}), "--every takes a number of milliseconds from 1, not '0'");
}

TEST(RunOptions, TakeATranscript) {
  const CommandRunOptions run = ParseRun({"--transcript", "t", "--transcript-times", "none"});
  EXPECT_EQ(run.Transcript, "t");
  EXPECT_FALSE(run.TranscriptTimes);
  EXPECT_TRUE(ParseRun({"--transcript-times", "all"}).TranscriptTimes);
  EXPECT_EQ(Refusal({"--transcript-times", "some"}), "--transcript-times takes all or none, not 'some'");
  EXPECT_EQ(Refusal({"--transcript", ""}), "--transcript takes a file, not ''");
}

TEST(RunOptions, TheShellTakesThemToo) {
  const Options options = Parse({"shell", "--connect", "OFFLINE", "--format", "json"});
  EXPECT_EQ(options.action, Options::Action::kShell);
  EXPECT_EQ(options.run.Connect, "OFFLINE");
  EXPECT_EQ(Parse({"shell", "A"}).error, "shell takes no commands");
  for (const char* option : {"--repeat", "--every"})
    EXPECT_EQ(Parse({"shell", option, "2"}).error, "--repeat and --every are for run and send");
}

TEST(RunOptions, TheFolderMayComeBeforeOrAfter) {
  EXPECT_EQ(Parse({"--folder", "/a", "run", "x"}).folder, "/a");
  EXPECT_EQ(Parse({"run", "x", "--folder", "/b"}).folder, "/b");
}

TEST(RunOptions, HelpIsTakenHereToo) {
  EXPECT_EQ(Parse({"run", "--help"}).action, Options::Action::kHelp);
  EXPECT_EQ(Parse({"--help", "run", "x"}).action, Options::Action::kHelp);
}

TEST(RunOptions, NothingIsSetUnlessGiven) {
  const CommandRunOptions run = ParseRun({});
  EXPECT_EQ(run.Connect, "");
  EXPECT_EQ(run.LogFile, "");
  EXPECT_FALSE(run.Baud || run.Parity || run.DataBits || run.StopBits || run.TimeoutMs ||
               run.SendTerminator || run.ReceiveTerminator || run.ReceiveMode || run.Count);
  EXPECT_FALSE(run.Binary || run.ShowCommands || run.ShowTimes || run.Verbose);
}

TEST(RunOptions, TakeTheLineParameters) {
  const CommandRunOptions run =
      ParseRun({"--baud=115200", "--parity", "ODD", "--data-bits", "7", "--stop-bits", "2"});
  EXPECT_EQ(run.Baud, 115200);
  EXPECT_EQ(run.Parity, SerialParity::kOdd);
  EXPECT_EQ(run.DataBits, 7);
  EXPECT_EQ(run.StopBits, 2);
  EXPECT_EQ(ParseRun({"--parity", "none"}).Parity, SerialParity::kNone);
  EXPECT_EQ(ParseRun({"--parity", "even"}).Parity, SerialParity::kEven);
  EXPECT_EQ(Refusal({"--baud", "0"}), "--baud takes a rate, not '0'");
  EXPECT_EQ(Refusal({"--parity", "mark"}), "--parity takes none, even or odd, not 'mark'");
  EXPECT_EQ(Refusal({"--data-bits", "6"}), "--data-bits takes 7 or 8, not '6'");
  EXPECT_EQ(Refusal({"--stop-bits", "1.5"}), "--stop-bits takes 1 or 2, not '1.5'");
}

TEST(RunOptions, TakeTimeouts) {
  EXPECT_EQ(ParseRun({"--timeout", "0"}).TimeoutMs, 0);
  EXPECT_EQ(ParseRun({"--timeout", "2147483647"}).TimeoutMs, 2147483647);
  for (const char* value : {"-1", "2147483648", "", "1s"})
    EXPECT_EQ(Refusal({"--timeout", value}),
              "--timeout takes a number of milliseconds, not '" + std::string(value) + "'");
}

TEST(RunOptions, TakeTerminators) {
  EXPECT_EQ(ParseRun({"--send-terminator", "LF"}).SendTerminator, "\n");
  EXPECT_EQ(ParseRun({"--send-terminator", "cr"}).SendTerminator, "\r");
  EXPECT_EQ(ParseRun({"--receive-terminator", "CRLF"}).ReceiveTerminator, "\r\n");
  EXPECT_EQ(ParseRun({"--receive-terminator", "None"}).ReceiveTerminator, "");
  EXPECT_EQ(ParseRun({"--receive-terminator", "0"}).ReceiveTerminator, std::string(1, '\0'));
  EXPECT_EQ(ParseRun({"--receive-terminator", "255"}).ReceiveTerminator, "\xFF");
  for (const char* value : {"256", "-1", ";", ""})
    EXPECT_EQ(Refusal({"--send-terminator", value}),
              "--send-terminator takes LF, CR, CRLF, NONE or a character code from 0 to 255, not '" +
                  std::string(value) + "'");
}

TEST(RunOptions, TakeReceiveModes) {
  EXPECT_EQ(ParseRun({"--receive-mode", "terminator"}).ReceiveMode, AnswerEnd::kTerminator);
  EXPECT_EQ(ParseRun({"--receive-mode", "auto"}).ReceiveMode, AnswerEnd::kGap);
  EXPECT_EQ(ParseRun({"--receive-mode", "count"}).ReceiveMode, AnswerEnd::kCount);
  EXPECT_EQ(Refusal({"--receive-mode", "gap"}), "--receive-mode takes terminator, auto or count, not 'gap'");
}

TEST(RunOptions, ACountIsAReceiveMode) {
  EXPECT_EQ(ParseRun({"--count", "1025"}).Count, 1025);
  EXPECT_EQ(ParseRun({"--count", "0"}).ReceiveMode, AnswerEnd::kCount);
  EXPECT_EQ(Refusal({"--count", "1026"}), "--count takes a number of bytes from 0 to 1025, not '1026'");
  EXPECT_EQ(Refusal({"--count", "5", "--receive-mode", "auto"}), "--count needs --receive-mode count");
  EXPECT_EQ(Refusal({"--binary", "--receive-mode", "terminator"}),
            "--binary needs --receive-mode auto or count");
  EXPECT_TRUE(ParseRun({"--binary", "--count", "5"}).Binary);
}

TEST(RunOptions, TakeTheFormatOfAnswers) {
  EXPECT_EQ(ParseRun({}).Format, AnswerFormat::kText);
  EXPECT_EQ(ParseRun({"--format", "text"}).Format, AnswerFormat::kText);
  EXPECT_EQ(ParseRun({"--format", "JSON"}).Format, AnswerFormat::kJson);
  EXPECT_EQ(ParseRun({"--format", "csv", "--fields", "8192"}).Fields, 8192);
  EXPECT_EQ(Refusal({"--format", "xml"}), "--format takes text, csv or json, not 'xml'");
  EXPECT_EQ(Refusal({"--format", "csv", "--fields", "0"}),
            "--fields takes a number of columns from 1 to 8192, not '0'");
  EXPECT_EQ(Refusal({"--format", "csv", "--fields", "8193"}),
            "--fields takes a number of columns from 1 to 8192, not '8193'");
  EXPECT_EQ(Refusal({"--fields", "2"}), "--fields needs --format csv");
  EXPECT_EQ(Refusal({"--fields", "2", "--format", "json"}), "--fields needs --format csv");
}

TEST(RunOptions, TakeTheChoiceOfOutputAndLog) {
  const CommandRunOptions run = ParseRun({"--show-commands", "--show-times", "--log", "a b.LOG"});
  EXPECT_TRUE(run.ShowCommands);
  EXPECT_TRUE(run.ShowTimes);
  EXPECT_EQ(run.LogFile, "a b.LOG");
}

TEST(RunOptions, RefuseInOneLine) {
  EXPECT_EQ(Refusal({"--bogus"}), "unknown option '--bogus'");
  EXPECT_EQ(Refusal({"-x"}), "unknown option '-x'");
  EXPECT_EQ(Refusal({"--binary", "-xy", "Y"}), "unknown option '-xy'");
  EXPECT_EQ(Refusal({"--folder", ""}), "--folder takes a folder, not ''");
  EXPECT_EQ(Refusal({"--mode", "1"}), "unknown option '--mode'");
  EXPECT_EQ(Refusal({"--connect"}), "option '--connect' needs a value");
  EXPECT_EQ(Refusal({"--connect", ""}), "--connect takes a RESOURCE, not ''");
  EXPECT_EQ(Refusal({"--verbose=yes"}), "unknown option '--verbose=yes'");
}

TEST(RunOptions, AdditionsAreOffUntilAskedFor) {
  const CommandRunOptions defaults = ParseRun({});
  EXPECT_FALSE(defaults.Flush || defaults.QueriesOnly || defaults.Blocks || defaults.Reconnect ||
               defaults.Utf8 || defaults.TimeStamps);
  EXPECT_TRUE(defaults.DeviceWords && defaults.ErrorLines);
  const CommandRunOptions all = ParseRun({"--flush", "--answers", "queries", "--blocks", "--no-device-words",
                                          "--reconnect", "--utf8", "--no-errors", "--timestamps"});
  EXPECT_TRUE(all.Flush && all.QueriesOnly && all.Blocks && all.Reconnect && all.Utf8 && all.TimeStamps);
  EXPECT_FALSE(all.DeviceWords || all.ErrorLines);
  EXPECT_FALSE(ParseRun({"--answers", "always"}).QueriesOnly);
  EXPECT_EQ(Refusal({"--answers", "never"}), "--answers takes always or queries, not 'never'");
}

}  // namespace
}  // namespace kolvane::app
