#include "app/options.h"

#include <getopt.h>

#include <charconv>
#include <cstring>
#include <optional>

namespace kolvane::app {
namespace {

enum Long : int { kMode = 256, kDemo, kFolder, kHelp, kVersion };

constexpr option kLongOptions[] = {
    {"mode", required_argument, nullptr, kMode},     {"demo", no_argument, nullptr, kDemo},
    {"folder", required_argument, nullptr, kFolder}, {"help", no_argument, nullptr, kHelp},
    {"version", no_argument, nullptr, kVersion},     {nullptr, 0, nullptr, 0},
};

std::optional<std::int16_t> WholeNumber(const char* text) {
  std::int16_t value = 0;
  const char* end = text + std::strlen(text);
  const auto result = std::from_chars(text, end, value);
  if (result.ec != std::errc() || result.ptr != end) return std::nullopt;
  return value;
}

void Refuse(Options& options, const std::string& why) {
  options.action = Options::Action::kUsageError;
  options.error = why;
}

void Apply(Options& options, int choice, char** argv) {
  switch (choice) {
    case kMode:
      if (const auto mode = WholeNumber(optarg)) {
        options.mode = *mode;
      } else {
        Refuse(options, std::string("--mode takes a whole number, not '") + optarg + "'");
      }
      break;
    case kDemo:
      options.action = Options::Action::kDemo;
      break;
    case kFolder:
      options.folder = optarg;
      break;
    case kHelp:
      options.action = Options::Action::kHelp;
      break;
    case kVersion:
      options.action = Options::Action::kVersion;
      break;
    case ':':
      Refuse(options, std::string("option '") + argv[optind - 1] + "' needs a value");
      break;
    default:
      Refuse(options, std::string("unknown option '") + argv[optind - 1] + "'");
      break;
  }
}

}  // namespace

Options ParseOptions(int argc, char** argv) {
  Options options;
  optind = 0;
  while (options.action != Options::Action::kUsageError) {
    const int choice = getopt_long(argc, argv, "+:", kLongOptions, nullptr);
    if (choice == -1) break;
    Apply(options, choice, argv);
  }
  if (options.action != Options::Action::kUsageError && optind < argc)
    Refuse(options, std::string("unknown command '") + argv[optind] + "'");
  return options;
}

std::string HelpText() {
  return "Usage: kolvane [OPTION]...\n"
         "Opens the command terminal for measurement amplifiers and other line-oriented ASCII instruments.\n"
         "\n"
         "  --mode N      operating mode: 2 own connection (default); any other opens the window on no "
         "device\n"
         "  --demo        terminal connected to a simulated amplifier; the user's settings stay untouched\n"
         "  --folder DIR  folder of histories, templates and help files\n"
         "  --help        this text\n"
         "  --version     version\n"
         "\n"
         "Exit status: 0 done, 1 the terminal could not be opened, 2 usage.\n";
}

}  // namespace kolvane::app
