#include "app/options.h"

#include <getopt.h>

#include <algorithm>
#include <limits>
#include <string_view>

#include "app/option_values.h"
#include "app/run_options.h"

namespace kolvane::app {
namespace {

enum Long : int { kMode = 256, kDemo, kFolder, kHelp, kVersion };

constexpr option kLongOptions[] = {
    {"mode", required_argument, nullptr, kMode},     {"demo", no_argument, nullptr, kDemo},
    {"folder", required_argument, nullptr, kFolder}, {"help", no_argument, nullptr, kHelp},
    {"version", no_argument, nullptr, kVersion},     {nullptr, 0, nullptr, 0},
};

void TakeMode(Options& options, const char* value) {
  constexpr std::int16_t kSmallest = std::numeric_limits<std::int16_t>::min();
  constexpr std::int16_t kLargest = std::numeric_limits<std::int16_t>::max();
  options.mode = NumberValue(value, kSmallest, kLargest);
  if (options.mode) return;
  Refuse(options, "--mode takes a whole number from " + std::to_string(kSmallest) + " to " +
                      std::to_string(kLargest) + ", not '" + value + "'");
}

// `word` is the argument in hand.
void Apply(Options& options, int choice, const char* word) {
  switch (choice) {
    case kMode:
      TakeMode(options, optarg);
      break;
    case kDemo:
      options.action = Options::Action::kDemo;
      break;
    case kFolder:
      options.folder = optarg;
      if (options.folder.empty()) Refuse(options, "--folder takes a folder, not ''");
      break;
    case kHelp:
    case 'h':
      options.action = Options::Action::kHelp;
      break;
    case kVersion:
      options.action = Options::Action::kVersion;
      break;
    default:
      RefuseWord(options, choice, word);
      break;
  }
}

// Of all options help alone means something here.
void ParsePorts(int argc, char** argv, Options& options) {
  options.action = Options::Action::kPorts;
  for (int i = 1; i < argc; ++i) {
    const std::string_view word = argv[i];
    if (word != "--help" && word != "-h") return Refuse(options, "ports takes no arguments");
    options.action = Options::Action::kHelp;
  }
}

// `argv` begins with the command.
void ParseCommand(int argc, char** argv, Options& options) {
  const std::string_view command = argv[0];
  if (command == "help") {
    options.action = Options::Action::kHelp;
    return;
  }
  if (command != "run" && command != "send" && command != "ports")
    return Refuse(options, "unknown command '" + std::string(command) + "'");
  if (options.action == Options::Action::kDemo) return Refuse(options, "--demo takes no command");
  if (options.mode) return Refuse(options, "--mode takes no command");
  if (command == "ports") return ParsePorts(argc, argv, options);
  options.action = command == "run" ? Options::Action::kRun : Options::Action::kSend;
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

Options ParseOptions(int argc, char** argv) {
  Options options;
  optind = 0;
  while (options.action != Options::Action::kUsageError) {
    const int at = std::max(optind, 1);
    const int choice = getopt_long(argc, argv, "+:h", kLongOptions, nullptr);
    if (choice == -1) break;
    Apply(options, choice, argv[at]);
  }
  if (options.mode && options.action == Options::Action::kDemo) Refuse(options, "--demo takes no --mode");
  const int first = optind;
  if (first < argc && TakesCommand(options.action)) ParseCommand(argc - first, argv + first, options);
  return options;
}

}  // namespace kolvane::app
