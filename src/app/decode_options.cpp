#include "app/decode_options.h"

#include <getopt.h>

#include <algorithm>
#include <limits>

#include "app/run_options.h"
#include "base/number.h"
#include "base/option_table.h"

namespace kolvane::app {
namespace {

enum Long : int { kTemplate = 256, kOffset, kMotorola, kRepeat, kFormat, kHelp };

constexpr option kLongOptions[] = {
    {"template", required_argument, nullptr, kTemplate},
    {"offset", required_argument, nullptr, kOffset},
    {"motorola", no_argument, nullptr, kMotorola},
    {"repeat", required_argument, nullptr, kRepeat},
    {"format", required_argument, nullptr, kFormat},
    {"help", no_argument, nullptr, kHelp},
    {nullptr, 0, nullptr, 0},
};

constexpr std::uint64_t kLargest = std::numeric_limits<std::int64_t>::max();

void TakeOffset(Options& options, std::string_view value) {
  const bool hex = value.starts_with("0x") || value.starts_with("0X");
  const auto offset =
      base::NumberValue<std::uint64_t>(hex ? value.substr(2) : value, 0, kLargest, hex ? 16 : 10);
  if (!offset)
    return Refuse(options,
                  "--offset takes a number of bytes (0x for hexadecimal), not '" + std::string(value) + "'");
  options.decode.Offset = *offset;
}

void TakeRepeat(Options& options, std::string_view value) {
  options.decode.Repeat = base::NumberValue<std::uint64_t>(value, 1, kLargest);
  if (!options.decode.Repeat && value != "all")
    Refuse(options, "--repeat takes a number of records or all, not '" + std::string(value) + "'");
}

void TakeFormat(Options& options, std::string_view value) {
  if (const auto format = FormatValue(value)) {
    options.decode.Format = *format;
  } else {
    Refuse(options, "--format takes text, csv or json, not '" + std::string(value) + "'");
  }
}

// `word` is the argument in hand.
void Apply(Options& options, int choice, const char* word) {
  switch (choice) {
    case kTemplate:
      options.decode.Template = optarg;
      break;
    case kOffset:
      TakeOffset(options, optarg);
      break;
    case kMotorola:
      options.decode.Motorola = true;
      break;
    case kRepeat:
      TakeRepeat(options, optarg);
      break;
    case kFormat:
      TakeFormat(options, optarg);
      break;
    case kHelp:
    case 'h':
      options.action = Options::Action::kHelp;
      break;
    case 1:
      options.words.emplace_back(optarg);
      break;
    default:
      RefuseWord(options, choice, word);
      break;
  }
}

void ParseWords(int argc, char** argv, const option* long_options, Options& options) {
  const Options::Action asked = options.action;
  optind = 0;
  for (;;) {
    const int at = std::max(optind, 1);
    const int choice = getopt_long(argc, argv, "-:h", long_options, nullptr);
    if (choice == -1) break;
    Apply(options, choice, argv[at]);
    if (options.action != asked) return;
  }
  options.words.insert(options.words.end(), argv + optind, argv + argc);
  const std::string command = argv[0];
  if (options.words.size() != 1)
    Refuse(options,
           command + (options.words.empty() ? " needs a file, or - for standard input" : " takes one file"));
}

}  // namespace

void ParseDecodeOptions(int argc, char** argv, Options& options) {
  options.action = Options::Action::kDecode;
  ParseWords(argc, argv, kLongOptions, options);
  if (options.action != Options::Action::kDecode) return;
  if (options.decode.Template.empty()) return Refuse(options, "decode needs --template T.BNS");
  options.decode.File = options.words.front();
}

void ParseDumpOptions(int argc, char** argv, Options& options) {
  constexpr option kHelpAlone[] = {{"help", no_argument, nullptr, kHelp}, {nullptr, 0, nullptr, 0}};
  options.action = Options::Action::kDump;
  ParseWords(argc, argv, kHelpAlone, options);
}

}  // namespace kolvane::app
