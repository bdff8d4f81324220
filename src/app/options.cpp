#include "app/options.h"

#include <getopt.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "app/command_options.h"
#include "base/number.h"
#include "base/text.h"

namespace kolvane::app {
namespace {

bool TakeAction(Options& options, Options::Action action) {
  options.action = action;
  return true;
}

constexpr std::int16_t kSmallestMode = std::numeric_limits<std::int16_t>::min();
constexpr std::int16_t kLargestMode = std::numeric_limits<std::int16_t>::max();
using Value = std::string_view;

constexpr base::OptionRow<Options> kOptions[] = {
    {"mode", "a whole number from -32768 to 32767",
     [](Options& o, Value v) {
       return (o.mode = base::NumberValue(v, kSmallestMode, kLargestMode)).has_value();
     }},
    {"demo", nullptr, [](Options& o, Value) { return TakeAction(o, Options::Action::kDemo); }},
    {"folder", "a folder", [](Options& o, Value v) { return !(o.folder = v).empty(); }},
    {"help", nullptr, [](Options& o, Value) { return TakeAction(o, Options::Action::kHelp); }},
    {"version", nullptr, [](Options& o, Value) { return TakeAction(o, Options::Action::kVersion); }},
};
constexpr int kFirst = 1000;  // + the index in a table
constexpr int kWord = 1;      // getopt's code for an argument that is not an option

void TakeOption(Options& options, const base::OptionRow<Options>& row) {
  const std::string value = optarg != nullptr ? optarg : "";
  if (!row.take(options, value))
    Refuse(options, std::string("--") + row.name + " takes " + row.expected + ", not '" + value + "'");
}

// `word` is the current argument.
void Apply(Options& options, std::span<const base::OptionRow<Options>> rows, int choice, const char* word) {
  if (choice >= kFirst) {
    TakeOption(options, rows[static_cast<std::size_t>(choice - kFirst)]);
  } else if (choice == kWord) {
    options.words.emplace_back(optarg);
  } else if (choice == 'h') {
    options.action = Options::Action::kHelp;
  } else if (const std::string why = base::AmbiguousOption(rows, word); choice == '?' && !why.empty()) {
    Refuse(options, why);
  } else {
    RefuseWord(options, choice, word);
  }
}

// The only option here is help.
void ParsePorts(int argc, char** argv, Options& options) {
  options.action = Options::Action::kPorts;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (word != "--help" && word != "-h") return Refuse(options, "ports takes no arguments");
    options.action = Options::Action::kHelp;
  }
}

void ParseCheck(int argc, char** argv, Options& options) {
  options.action = Options::Action::kCheck;
  bool names_only = false;
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (names_only || !word.starts_with('-')) {
      options.words.push_back(word);
    } else if (word == "--help" || word == "-h") {
      options.action = Options::Action::kHelp;
      return;
    } else if (word == "--") {
      names_only = true;
    } else {
      return RefuseWord(options, '?', word);
    }
  }
  if (options.words.empty()) Refuse(options, "check needs a command list");
}

// Recognizes a command file by its ending or a folder in its name; commands have neither.
bool IsListName(std::string_view word) {
  constexpr std::string_view kEnding = ".CMD";
  const bool ends =
      word.size() > kEnding.size() && base::EqualsNoCase(word.substr(word.size() - kEnding.size()), kEnding);
  return ends || word.find('/') != word.npos;
}

void ParseList(int argc, char** argv, Options& options) {
  if (options.action == Options::Action::kDemo) return Refuse(options, "--demo takes no command list");
  if (argc > 1)
    return Refuse(options, "one command list can be opened, not also '" + std::string(argv[1]) + "'");
  options.words = {argv[0]};
}

// argv[0] is the command.
void ParseCommand(int argc, char** argv, Options& options) {
  const std::string_view command = argv[0];
  if (command == "help") {
    options.action = Options::Action::kHelp;
    return;
  }
  if (IsListName(command)) return ParseList(argc, argv, options);
  constexpr std::string_view kCommands[] = {"run", "send", "shell", "check", "ports", "dump", "decode"};
  if (std::ranges::find(kCommands, command) == std::end(kCommands))
    return Refuse(options, "unknown command '" + std::string(command) + "'");
  if (options.action == Options::Action::kDemo) return Refuse(options, "--demo takes no command");
  if (options.mode) return Refuse(options, "--mode takes no command");
  if (command == "check") return ParseCheck(argc, argv, options);
  if (command == "ports") return ParsePorts(argc, argv, options);
  if (command == "dump") return ParseDumpOptions(argc, argv, options);
  if (command == "decode") return ParseDecodeOptions(argc, argv, options);
  options.action = command == "run"    ? Options::Action::kRun
                   : command == "send" ? Options::Action::kSend
                                       : Options::Action::kShell;
  ParseRunOptions(argc, argv, options);
}

bool TakesCommand(Options::Action action) {
  return action == Options::Action::kOpen || action == Options::Action::kDemo;
}

}  // namespace

void Refuse(Options& options, const std::string& why) {
  options.action = Options::Action::kUsageError;
  options.error = why;
}

void RefuseWord(Options& options, int choice, const std::string& word) {
  Refuse(options, choice == ':' ? "option '" + word + "' needs a value" : "unknown option '" + word + "'");
}

void ParseWords(int argc, char** argv, std::span<const base::OptionRow<Options>> rows, Options& options) {
  const Options::Action asked = options.action;
  const std::vector<option> long_options =
      base::LongOptions<Options>(rows, kFirst, {{"help", no_argument, nullptr, 'h'}});
  optind = 0;
  // "-": words and options may come in any order, regardless of POSIXLY_CORRECT.
  for (;;) {
    const int at = std::max(optind, 1);
    const int choice = getopt_long(argc, argv, "-:h", long_options.data(), nullptr);
    if (choice == -1) break;
    Apply(options, rows, choice, argv[at]);
    if (options.action != asked) return;
  }
  options.words.insert(options.words.end(), argv + optind, argv + argc);
}

Options ParseOptions(int argc, char** argv) {
  Options options;
  const std::vector<option> long_options = base::LongOptions<Options>(kOptions, kFirst, {});
  optind = 0;
  while (options.action != Options::Action::kUsageError) {
    const int at = std::max(optind, 1);
    const int choice = getopt_long(argc, argv, "+:h", long_options.data(), nullptr);
    if (choice == -1) break;
    Apply(options, kOptions, choice, argv[at]);
  }
  if (options.mode && options.action == Options::Action::kDemo) Refuse(options, "--demo takes no --mode");
  const int first = optind;
  if (first < argc && TakesCommand(options.action)) ParseCommand(argc - first, argv + first, options);
  return options;
}

std::string HelpText() {
  return R"(Usage: kolvane [OPTION]... [LIST.CMD]
       kolvane run LIST.CMD [--connect RESOURCE] [OPTION]...
       kolvane send COMMAND...|- [--connect RESOURCE] [OPTION]...
       kolvane shell [--connect RESOURCE] [OPTION]...
       kolvane check LIST.CMD...
       kolvane ports
       kolvane dump FILE|-
       kolvane decode FILE|- --template T.BNS [OPTION]...
       kolvane help
The command terminal for measurement amplifiers and other line-oriented ASCII instruments.

Without a command it opens the terminal's window, with the command list if one is given:
  --mode N      operating mode: 2 own connection (default); 0 and 1, a host's device, are for hosts only;
                any other opens the window without a device
  --demo        terminal connected to a simulated amplifier; the user's settings stay untouched
  --folder DIR  folder of histories, templates and help files; without a window as well
  -h, --help    this text, as does help
  --version     version

run executes a command list without a window, send sends each COMMAND and prints each answer; - reads the commands from
standard input, one per line, and sends each as it arrives. shell is interactive: each line is a command, a $ row of
a list or $RUN LIST.CMD; Ctrl+D ends it, Tab completes, Esc gives up a wait. All three take:
  --connect RESOURCE         instead of the stored connection and terminal settings, one of
                             TCPIP::HOST::PORT::SOCKET   ASRL1::INSTR  ASRL2::INSTR
                             ASRL/dev/ttyUSB0::INSTR     ASRL/dev/ttyUSB0::RS485::ADDRESS
                             USB::SERIALNUMBER::INSTR    USB0::0xVVVV::0xPPPP::SERIALNUMBER::INSTR
                             GPIB0::ADDRESS::INSTR       LPT1  LPT2  OFFLINE
                             or, in short, HOST:PORT     /dev/ttyUSB0
  --baud RATE                serial lines; 9600 without it
  --parity none|even|odd     even without it
  --data-bits 7|8, --stop-bits 1|2
  --timeout MS               for connecting and for each answer
  --send-terminator T        LF, CR, CRLF, NONE or a character code
  --receive-terminator T     the same
  --receive-mode MODE        where an answer ends: terminator, auto (at a gap) or count
  --count N                  bytes of an answer, up to 1025
  --binary                   each byte of an answer as <0D>
  --show-commands            print the commands, too
  --show-times               print the time that each exchange took
  --format text|csv|json     lines as in the window, or a record for each exchange
  --fields N                 with csv: numeric answers only, a column for each of N fields
  --repeat N                 run the list, or send the commands, N times; not with shell or send -
  --every MS                 start again every MS milliseconds, without --repeat until stopped; not with shell or send -
  --transcript FILE          append all bytes both ways to FILE, as JSON lines with their times
  --transcript-times WORD    all, or none: lines without times, for diff
  --log FILE                 append each line to FILE
  --verbose                  report connecting and disconnecting on standard error
  --answers always|queries   queries: a command without "?" is not followed by a read
  --flush                    discard received bytes before each command
  --blocks                   read answers that start with # and a digit as blocks
  --no-device-words          DCL, RES, *RST and STP end no exchange
  --reconnect                after a lost connection the next command connects first
  --utf8                     the instrument's bytes are UTF-8
  --no-errors                failed answers on standard error only
  --timestamps               start each line with its time

check reports what is wrong in command lists without running them, one line each: FILE:ROW: Fehler: TEXT where a run
is refused when it gets there, FILE:ROW: Hinweis: TEXT for what is odd. Exit status: 0 no Fehler, 1 at least one,
2 a list cannot be read.

ports lists what can be connected to, one line each: RESOURCE, device node, description.

dump prints a hex dump of a file, or of standard input, as the binary inspector shows it.

decode prints the fields of a format template, a line each:
  --template T.BNS           the template
  --offset N                 start at byte N (0x for hexadecimal)
  --motorola                 high byte first
  --repeat N|all             N consecutive records, or all; 1 without it
  --format text|csv|json     lines, one row per record, or one object per record

Exit status otherwise: 0 done, 1 stopped (an error in the list, a signal; the window could not be opened), 2 usage,
3 no connection, 4 done but at least one answer failed.
)";
}

}  // namespace kolvane::app
