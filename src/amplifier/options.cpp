#include "amplifier/options.h"

#include <getopt.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

#include "base/number.h"
#include "base/option_table.h"

namespace kolvane::amplifier {
namespace {

constexpr std::string_view kHelp =
    "usage: kolvane-amplifier --tcp PORT | --pty LINK [options]\n"
    "A simulated measuring amplifier that answers line by line.\n"
    "\n"
    "  --tcp PORT            listen on 127.0.0.1:PORT; 0 selects a free port\n"
    "  --pty LINK            open a pseudo terminal and make the symbolic link LINK to it\n"
    "  --delay MS            wait before each answer\n"
    "  --drip MS             send one byte every MS milliseconds\n"
    "  --close-after N       close each connection after N answers\n"
    "  --reset-after N       reset each connection after N answers\n"
    "  --close-mid-answer N  close after half of the Nth answer\n"
    "  --silent              answer nothing\n"
    "  --silent-after N      answer nothing more after N answers\n"
    "  --terminator WORD     end of each answer: crlf (default), lf, cr, none\n"
    "  --echo                send each line back instead of being an amplifier\n"
    "  --file PATH           a file that FILE? sends; may be given several times\n"
    "  --seed N              seed of the simulated noise (default 1)\n"
    "  --replay FILE         answer as in a transcript of kolvane and end after it, with 1 if a command "
    "differs\n"
    "  --replay-times WORD   when to answer: none (default), at once, or recorded, after the recorded times\n"
    "  --exit-with-parent    end when the thread that started it ends\n"
    "  --help                this text\n"
    "  --version             the version\n";

constexpr std::uint64_t kMaxCount = 1'000'000'000;
constexpr const char* kPauseForm = "a number of milliseconds from 0 to 600000";
constexpr const char* kCountForm = "a whole number from 0 to 1000000000";

template <typename Target>
bool TakeNumber(std::string_view text, std::uint64_t minimum, std::uint64_t maximum, Target& target) {
  const auto value = base::NumberValue(text, minimum, maximum);
  if (value) target = static_cast<Target>(*value);
  return value.has_value();
}

using Value = std::string_view;

constexpr base::OptionRow<Options> kOptionRows[] = {
    {"tcp", "a port number from 0 to 65535",
     [](Options& o, Value v) { return TakeNumber(v, 0, 65535, o.tcp_port.emplace()); }},
    {"pty", "the path of a link", [](Options& o, Value v) { return !(o.pty_link = v).empty(); }},
    {"delay", kPauseForm,
     [](Options& o, Value v) { return TakeNumber(v, 0, kMaxPauseMs, o.transmission.delay_ms); }},
    {"drip", kPauseForm,
     [](Options& o, Value v) { return TakeNumber(v, 0, kMaxPauseMs, o.transmission.drip_ms); }},
    {"close-after", kCountForm,
     [](Options& o, Value v) { return TakeNumber(v, 0, kMaxCount, o.behaviour.close_after); }},
    {"reset-after", kCountForm,
     [](Options& o, Value v) { return TakeNumber(v, 0, kMaxCount, o.behaviour.reset_after); }},
    {"close-mid-answer", "a whole number from 1 to 1000000000",
     [](Options& o, Value v) { return TakeNumber(v, 1, kMaxCount, o.behaviour.close_mid_answer); }},
    {"silent", nullptr,
     [](Options& o, Value) {
       o.behaviour.silent_after = 0;
       return true;
     }},
    {"silent-after", kCountForm,
     [](Options& o, Value v) { return TakeNumber(v, 0, kMaxCount, o.behaviour.silent_after); }},
    {"terminator", "crlf, lf, cr or none",
     [](Options& o, Value v) {
       const auto terminator = TerminatorNamed(v);
       o.transmission.terminator = terminator.value_or("");
       return terminator.has_value();
     }},
    {"echo", nullptr, [](Options& o, Value) { return o.echo = true; }},
    {"file", "the path of a file", [](Options& o, Value v) { return !o.files.emplace_back(v).empty(); }},
    {"seed", "a whole number from 0 to 18446744073709551615",
     [](Options& o, Value v) { return TakeNumber(v, 0, std::numeric_limits<std::uint64_t>::max(), o.seed); }},
    {"replay", "the path of a file", [](Options& o, Value v) { return !(o.replay = v).empty(); }},
    {"replay-times", "none or recorded",
     [](Options& o, Value v) {
       o.recorded_times = v == "recorded";
       return o.recorded_times || v == "none";
     }},
    {"exit-with-parent", nullptr, [](Options& o, Value) { return o.exit_with_parent = true; }},
};
constexpr std::size_t kRowCount = std::size(kOptionRows);
constexpr int kHelpCode = kRowCount;
constexpr int kVersionCode = kHelpCode + 1;

// getopt_long sets optopt to 0 for an unknown long option, to the letter of an unknown short one, otherwise
// to the option's code.
std::string ErrorFor(int code, std::string_view argument) {
  const std::string_view name = argument.substr(0, argument.find('='));
  if (code == ':') return "option '" + std::string(name) + "' needs a value";
  if (optopt > kVersionCode) return std::string("unknown option '-") + static_cast<char>(optopt) + "'";
  if (name != argument && optopt > 0) return "option '" + std::string(name) + "' takes no value";
  const std::string ambiguous = base::AmbiguousOption<Options>(kOptionRows, argument);
  return ambiguous.empty() ? "unknown option '" + std::string(argument) + "'" : ambiguous;
}

// `conflicting` is an option not allowed with a replay, if one was given.
std::variant<Options, Information, UsageError> Finish(Options options, std::string_view conflicting, int argc,
                                                      char* const argv[]) {
  if (optind < argc) return UsageError{"unexpected argument '" + std::string(argv[optind]) + "'"};
  if (!options.tcp_port && options.pty_link.empty())
    return UsageError{"neither --tcp PORT nor --pty LINK is given"};
  if (options.recorded_times && options.replay.empty())
    return UsageError{"--replay-times recorded needs --replay FILE"};
  if (!options.replay.empty() && !conflicting.empty())
    return UsageError{"--replay takes no --" + std::string(conflicting)};
  if (!options.replay.empty() && options.tcp_port && !options.pty_link.empty())
    return UsageError{"--replay takes one of --tcp and --pty"};
  return options;
}

// Options allowed with a replay; the transcript determines the rest.
bool IsAllowedWithReplay(std::string_view name) {
  constexpr std::string_view kNames[] = {"tcp", "pty", "replay", "replay-times", "exit-with-parent"};
  return std::ranges::find(kNames, name) != std::end(kNames);
}

}  // namespace

std::variant<Options, Information, UsageError> ParseOptions(int argc, char* const argv[]) {
  const std::vector<option> table = base::LongOptions<Options>(
      kOptionRows, 0,
      {{"help", no_argument, nullptr, kHelpCode}, {"version", no_argument, nullptr, kVersionCode}});
  Options options;
  std::string_view conflicting;  // an option not allowed with a replay
  optind = 0;                    // restarts getopt_long
  for (;;) {
    const int code = getopt_long(argc, argv, "+:", table.data(), nullptr);
    if (code == -1) return Finish(std::move(options), conflicting, argc, argv);
    if (code == kHelpCode) return Information{std::string(kHelp)};
    if (code == kVersionCode) return Information{"kolvane-amplifier " KOLVANE_VERSION "\n"};
    if (code == '?' || code == ':') return UsageError{ErrorFor(code, argv[optind - 1])};
    const auto& row = kOptionRows[code];
    if (!IsAllowedWithReplay(row.name)) conflicting = row.name;
    const std::string_view value = optarg != nullptr ? optarg : "";
    if (!row.take(options, value))
      return UsageError{"option '--" + std::string(row.name) + "': '" + std::string(value) + "' is not " +
                        row.expected};
  }
}

}  // namespace kolvane::amplifier
