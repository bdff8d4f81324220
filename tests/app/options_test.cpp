#include "app/options.h"

#include <gtest/gtest.h>

#include "app/parse.h"

namespace kolvane::app {
namespace {

TEST(Options, OpenOperatingMode2ByDefault) {
  const Options options = Parse({});
  EXPECT_EQ(options.action, Options::Action::kOpen);
  EXPECT_FALSE(options.mode);
  EXPECT_EQ(options.folder, "");
}

TEST(Options, TakeModeAndFolder) {
  const Options options = Parse({"--mode", "1", "--folder=/tmp/x"});
  EXPECT_EQ(options.mode, 1);
  EXPECT_EQ(options.folder, "/tmp/x");
}

TEST(Options, KnowDemoHelpAndVersion) {
  EXPECT_EQ(Parse({"--demo"}).action, Options::Action::kDemo);
  EXPECT_EQ(Parse({"--version"}).action, Options::Action::kVersion);
}

TEST(Options, KnowEveryUsualWayToAskForHelp) {
  using Words = std::vector<std::string>;
  for (const Words& words :
       {Words{"--help"}, Words{"-h"}, Words{"help"}, Words{"help", "run"}, Words{"run", "-h"},
        Words{"send", "--help"}, Words{"ports", "-h"}, Words{"--folder", "x", "help"}})
    EXPECT_EQ(Parse(words).action, Options::Action::kHelp) << words.front();
}

TEST(Options, PortsTakesNoOtherOption) {
  EXPECT_EQ(Parse({"ports"}).action, Options::Action::kPorts);
  EXPECT_EQ(Parse({"ports", "--help"}).action, Options::Action::kHelp);
  EXPECT_EQ(Parse({"ports", "COM1"}).error, "ports takes no arguments");
  EXPECT_EQ(Parse({"--demo", "ports"}).error, "--demo takes no command");
}

TEST(Options, CheckTakesLists) {
  const Options options = Parse({"check", "a.CMD", "--", "-b.CMD"});
  EXPECT_EQ(options.action, Options::Action::kCheck);
  EXPECT_EQ(options.words, (std::vector<std::string>{"a.CMD", "-b.CMD"}));
  EXPECT_EQ(Parse({"check", "a.CMD", "--help"}).action, Options::Action::kHelp);
  EXPECT_EQ(Parse({"check", "-h"}).action, Options::Action::kHelp);
  EXPECT_EQ(Parse({"check"}).error, "check needs a command list");
  EXPECT_EQ(Parse({"check", "--"}).error, "check needs a command list");
  EXPECT_EQ(Parse({"check", "a.CMD", "--log", "x"}).error, "unknown option '--log'");
  EXPECT_EQ(Parse({"--demo", "check", "a.CMD"}).error, "--demo takes no command");
}

TEST(Options, TakeAModeForTheWindowOnly) {
  EXPECT_EQ(Parse({"--mode", "1", "ports"}).error, "--mode takes no command");
  EXPECT_EQ(Parse({"--mode", "1", "--demo"}).error, "--demo takes no --mode");
  EXPECT_EQ(Parse({"--mode", "1", "--help"}).action, Options::Action::kHelp);
}

TEST(Options, TakeModesUpToSixteenBits) {
  EXPECT_EQ(Parse({"--mode", "32767"}).mode, 32767);
  EXPECT_EQ(Parse({"--mode", "32768"}).error,
            "--mode takes a whole number from -32768 to 32767, not '32768'");
}

TEST(Options, RefuseInOneLine) {
  EXPECT_EQ(Parse({"--bogus"}).error, "unknown option '--bogus'");
  EXPECT_EQ(Parse({"-x"}).error, "unknown option '-x'");
  EXPECT_EQ(Parse({"-xy"}).error, "unknown option '-xy'");
  EXPECT_EQ(Parse({"-ü", "run"}).error, "unknown option '-ü'");
  EXPECT_EQ(Parse({"send", "X", "--tim", "5"}).error, "option '--tim' is ambiguous: --timeout, --timestamps");
  EXPECT_EQ(Parse({"run", "a.CMD", "--re=5"}).error,
            "option '--re=5' is ambiguous: --receive-terminator, --receive-mode, --repeat, --reconnect");
  EXPECT_EQ(Parse({"send", "X", "--timeo", "5"}).error, "");
  EXPECT_EQ(Parse({"send", "X", "--=5"}).error, "unknown option '--=5'");
  EXPECT_EQ(Parse({"--version=1"}).error, "unknown option '--version=1'");
  EXPECT_EQ(Parse({"--mode"}).error, "option '--mode' needs a value");
  EXPECT_EQ(Parse({"--folder", ""}).error, "--folder takes a folder, not ''");
  EXPECT_EQ(Parse({"--mode", "zwei"}).error, "--mode takes a whole number from -32768 to 32767, not 'zwei'");
  EXPECT_EQ(Parse({"--mode", ""}).error, "--mode takes a whole number from -32768 to 32767, not ''");
  EXPECT_EQ(Parse({"fly"}).error, "unknown command 'fly'");
  EXPECT_EQ(Parse({"fly"}).action, Options::Action::kUsageError);
  EXPECT_EQ(Parse({"--demo", "run", "a.CMD"}).error, "--demo takes no command");
}

TEST(Options, AListOpensInTheWindow) {
  for (const char* name : {"list.CMD", "list.cmd", "./list", "/tmp/list", "run/list"}) {
    const Options options = Parse({"--folder", "/tmp", name});
    EXPECT_EQ(options.action, Options::Action::kOpen) << name;
    EXPECT_EQ(options.words, std::vector<std::string>({name}));
  }
  EXPECT_EQ(Parse({".CMD"}).error, "unknown command '.CMD'");
  EXPECT_EQ(Parse({"a.CMD", "b.CMD"}).error, "one command list can be opened, not also 'b.CMD'");
  EXPECT_EQ(Parse({"--demo", "a.CMD"}).error, "--demo takes no command list");
  EXPECT_EQ(Parse({"--mode", "2", "a.CMD"}).action, Options::Action::kOpen);
}

TEST(Options, TakeADecoding) {
  const Options options = Parse({"decode", "--template", "T.BNS", "--offset", "0x1F", "--motorola",
                                 "--repeat", "all", "--format", "CSV", "-"});
  EXPECT_EQ(options.action, Options::Action::kDecode);
  EXPECT_EQ(options.decode.File, "-");
  EXPECT_EQ(options.decode.Template, "T.BNS");
  EXPECT_EQ(options.decode.Offset, 31u);
  EXPECT_TRUE(options.decode.Motorola);
  EXPECT_EQ(options.decode.Repeat, std::nullopt);
  EXPECT_EQ(options.decode.Format, AnswerFormat::kCsv);
  EXPECT_EQ(Parse({"decode", "a", "--template", "T", "--repeat", "7"}).decode.Repeat, 7u);
  EXPECT_EQ(Parse({"decode", "a", "--template", "T"}).decode.Repeat, 1u);
  EXPECT_EQ(Parse({"dump", "--", "-a"}).words, std::vector<std::string>{"-a"});
  EXPECT_EQ(Parse({"dump", "--help"}).action, Options::Action::kHelp);
  EXPECT_EQ(Parse({"dump", "a", "--motorola"}).error, "unknown option '--motorola'");
  EXPECT_EQ(Parse({"decode", "a", "--offset", "-1"}).error,
            "--offset takes a number of bytes (0x for hexadecimal), not '-1'");
  const std::string largest = "0x7FFFFFFFFFFFFFFF";
  EXPECT_EQ(Parse({"decode", "a", "--template", "T", "--offset", largest}).decode.Offset,
            0x7FFF'FFFF'FFFF'FFFFu);
  EXPECT_EQ(Parse({"decode", "a", "--offset", "0x8000000000000000"}).error,
            "--offset takes a number of bytes (0x for hexadecimal), not '0x8000000000000000'");
  EXPECT_EQ(Parse({"decode", "a", "--repeat", "0"}).error,
            "--repeat takes a number of records or all, not '0'");
  EXPECT_EQ(Parse({"decode", "a", "--format", "xml"}).error, "--format takes text, csv or json, not 'xml'");
  EXPECT_EQ(Parse({"decode", "a"}).error, "decode needs --template T.BNS");
}

TEST(Options, HelpNamesEveryCallAndOption) {
  const std::string help = HelpText();
  for (const char* word : {"--mode",
                           "--demo",
                           "--folder",
                           "--help",
                           "--version",
                           "kolvane run LIST.CMD",
                           "kolvane send COMMAND...",
                           "kolvane check LIST.CMD...",
                           "kolvane ports",
                           "kolvane dump FILE|-",
                           "kolvane decode FILE|-",
                           "--template T.BNS",
                           "--offset N",
                           "--motorola",
                           "--repeat N|all",
                           "kolvane help",
                           "-h, --help",
                           "--connect",
                           "--baud",
                           "--parity none|even|odd",
                           "--data-bits",
                           "--stop-bits",
                           "--timeout MS",
                           "--send-terminator",
                           "--receive-terminator",
                           "--receive-mode",
                           "--count",
                           "--binary",
                           "--show-commands",
                           "--show-times",
                           "--format text|csv|json",
                           "--fields N",
                           "--log FILE",
                           "--verbose"})
    EXPECT_NE(help.find(word), std::string::npos) << word;
}

}  // namespace
}  // namespace kolvane::app
