#include "amplifier/options.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace kolvane::amplifier {
namespace {

using Parsed = std::variant<Options, Information, UsageError>;

Parsed Parse(std::initializer_list<std::string> arguments) {
  std::vector<std::string> texts = {"kolvane-amplifier"};
  texts.insert(texts.end(), arguments);
  std::vector<char*> argv;
  for (std::string& text : texts) argv.push_back(text.data());
  argv.push_back(nullptr);
  return ParseOptions(static_cast<int>(texts.size()), argv.data());
}

std::string ErrorOf(std::initializer_list<std::string> arguments) {
  const Parsed parsed = Parse(arguments);
  const auto* error = std::get_if<UsageError>(&parsed);
  return error != nullptr ? error->text : "(none)";
}

TEST(CommandLine, DefaultsAreAWellBehavedInstrument) {
  const Options options = std::get<Options>(Parse({"--tcp", "0"}));
  EXPECT_EQ(options.tcp_port, 0);
  EXPECT_EQ(options.pty_link, "");
  EXPECT_EQ(options.behaviour.close_after, Behaviour::kNever);
  EXPECT_EQ(options.behaviour.reset_after, Behaviour::kNever);
  EXPECT_EQ(options.behaviour.silent_after, Behaviour::kNever);
  EXPECT_EQ(options.behaviour.close_mid_answer, Behaviour::kNever);
  EXPECT_EQ(options.transmission.delay_ms, 0u);
  EXPECT_EQ(options.transmission.drip_ms, 0u);
  EXPECT_EQ(options.transmission.terminator, "\r\n");
  EXPECT_FALSE(options.echo);
  EXPECT_FALSE(options.exit_with_parent);
  EXPECT_TRUE(options.files.empty());
  EXPECT_EQ(options.seed, 1u);
}

TEST(CommandLine, TakesEveryOption) {
  const Options options = std::get<Options>(Parse({"--tcp=65535",
                                                   "--pty",
                                                   "/tmp/link",
                                                   "--delay",
                                                   "5",
                                                   "--drip",
                                                   "600000",
                                                   "--close-after",
                                                   "0",
                                                   "--reset-after",
                                                   "1000000000",
                                                   "--close-mid-answer",
                                                   "1",
                                                   "--silent-after",
                                                   "9",
                                                   "--terminator",
                                                   "LF",
                                                   "--echo",
                                                   "--file",
                                                   "a",
                                                   "--file",
                                                   "b",
                                                   "--seed",
                                                   "18446744073709551615",
                                                   "--exit-with-parent"}));
  EXPECT_EQ(options.tcp_port, 65535);
  EXPECT_EQ(options.pty_link, "/tmp/link");
  EXPECT_EQ(options.transmission.delay_ms, 5u);
  EXPECT_EQ(options.transmission.drip_ms, 600'000u);
  EXPECT_EQ(options.behaviour.close_after, 0u);
  EXPECT_EQ(options.behaviour.reset_after, 1'000'000'000u);
  EXPECT_EQ(options.behaviour.close_mid_answer, 1u);
  EXPECT_EQ(options.behaviour.silent_after, 9u);
  EXPECT_EQ(options.transmission.terminator, "\n");
  EXPECT_TRUE(options.echo);
  EXPECT_EQ(options.files, (std::vector<std::string>{"a", "b"}));
  EXPECT_EQ(options.seed, std::numeric_limits<std::uint64_t>::max());
  EXPECT_TRUE(options.exit_with_parent);
}

TEST(CommandLine, SilentMeansFromTheStart) {
  EXPECT_EQ(std::get<Options>(Parse({"--tcp", "0", "--silent"})).behaviour.silent_after, 0u);
}

TEST(CommandLine, NoTerminatorCanBeSelected) {
  EXPECT_EQ(std::get<Options>(Parse({"--tcp", "0", "--terminator", "none"})).transmission.terminator, "");
}

TEST(CommandLine, HelpNamesEveryOption) {
  const Parsed parsed = Parse({"--help"});
  const std::string help = std::get<Information>(parsed).text;
  for (const char* name : {"--tcp", "--pty", "--delay", "--drip", "--close-after", "--reset-after",
                           "--close-mid-answer", "--silent", "--silent-after", "--terminator", "--echo",
                           "--file", "--seed", "--exit-with-parent", "--help", "--version"})
    EXPECT_NE(help.find(std::string("  ") + name + ' '), std::string::npos) << name;
}

TEST(CommandLine, VersionIsALine) {
  const Parsed parsed = Parse({"--version"});
  const std::string text = std::get<Information>(parsed).text;
  EXPECT_TRUE(text.starts_with("kolvane-amplifier "));
  EXPECT_TRUE(text.ends_with("\n"));
}

TEST(CommandLine, UnknownOptionsAreNamed) {
  EXPECT_EQ(ErrorOf({"--foo"}), "unknown option '--foo'");
  EXPECT_EQ(ErrorOf({"--foo=3"}), "unknown option '--foo=3'");
  EXPECT_EQ(ErrorOf({"--rep", "a"}), "option '--rep' is ambiguous: --replay, --replay-times");
  EXPECT_EQ(ErrorOf({"-x"}), "unknown option '-x'");
  EXPECT_EQ(ErrorOf({"-xy"}), "unknown option '-x'");
  EXPECT_EQ(ErrorOf({"--tcp", "0", "extra"}), "unexpected argument 'extra'");
  EXPECT_EQ(ErrorOf({""}), "unexpected argument ''");
  EXPECT_EQ(ErrorOf({}), "neither --tcp PORT nor --pty LINK is given");
  EXPECT_EQ(ErrorOf({"--echo"}), "neither --tcp PORT nor --pty LINK is given");
}

TEST(CommandLine, MissingAndSuperfluousValuesAreNamed) {
  EXPECT_EQ(ErrorOf({"--tcp"}), "option '--tcp' needs a value");
  EXPECT_EQ(ErrorOf({"--tcp", "0", "--file"}), "option '--file' needs a value");
  EXPECT_EQ(ErrorOf({"--echo=3"}), "option '--echo' takes no value");
  EXPECT_EQ(ErrorOf({"--help=3"}), "option '--help' takes no value");
}

TEST(CommandLine, ValuesAreCheckedAtTheirLimits) {
  EXPECT_EQ(ErrorOf({"--tcp", "65536"}), "option '--tcp': '65536' is not a port number from 0 to 65535");
  EXPECT_EQ(ErrorOf({"--tcp", "-1"}), "option '--tcp': '-1' is not a port number from 0 to 65535");
  EXPECT_EQ(ErrorOf({"--tcp="}), "option '--tcp': '' is not a port number from 0 to 65535");
  EXPECT_EQ(ErrorOf({"--delay", "600001"}),
            "option '--delay': '600001' is not a number of milliseconds from 0 to 600000");
  EXPECT_EQ(ErrorOf({"--drip", "5ms"}),
            "option '--drip': '5ms' is not a number of milliseconds from 0 to 600000");
  EXPECT_EQ(ErrorOf({"--close-after", "1000000001"}),
            "option '--close-after': '1000000001' is not a whole number from 0 to 1000000000");
  EXPECT_EQ(ErrorOf({"--close-mid-answer", "0"}),
            "option '--close-mid-answer': '0' is not a whole number from 1 to 1000000000");
  EXPECT_EQ(ErrorOf({"--terminator", "nul"}), "option '--terminator': 'nul' is not crlf, lf, cr or none");
  EXPECT_EQ(ErrorOf({"--pty", ""}), "option '--pty': '' is not the path of a link");
  EXPECT_EQ(ErrorOf({"--file", ""}), "option '--file': '' is not the path of a file");
  EXPECT_EQ(ErrorOf({"--seed", "18446744073709551616"}),
            "option '--seed': '18446744073709551616' is not a whole number from 0 to 18446744073709551615");
}

TEST(CommandLine, AReplayTakesNoOptionsOfTheAmplifier) {
  const Options options =
      std::get<Options>(Parse({"--pty", "/tmp/link", "--replay", "a", "--replay-times", "recorded"}));
  EXPECT_EQ(options.replay, "a");
  EXPECT_TRUE(options.recorded_times);
  EXPECT_FALSE(
      std::get<Options>(Parse({"--tcp", "0", "--replay", "a", "--replay-times", "none"})).recorded_times);
  EXPECT_EQ(ErrorOf({"--tcp", "0", "--echo", "--replay", "a"}), "--replay takes no --echo");
  EXPECT_EQ(ErrorOf({"--tcp", "0", "--replay", "a", "--delay", "5"}), "--replay takes no --delay");
  EXPECT_EQ(ErrorOf({"--tcp", "0", "--pty", "b", "--replay", "a"}), "--replay takes one of --tcp and --pty");
  EXPECT_EQ(ErrorOf({"--tcp", "0", "--replay", "a", "--replay-times", "all"}),
            "option '--replay-times': 'all' is not none or recorded");
  EXPECT_EQ(ErrorOf({"--tcp", "0", "--replay-times", "recorded"}),
            "--replay-times recorded needs --replay FILE");
}

}  // namespace
}  // namespace kolvane::amplifier
