#include "app/run_options.h"

#include <getopt.h>
#include <strings.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace kolvane::app {
namespace {

template <typename Value>
struct Word {
  const char* word;
  Value value;
};

template <typename Value, std::size_t size>
std::optional<Value> Find(const Word<Value> (&words)[size], std::string_view text) {
  for (const Word<Value>& word : words) {
    if (strcasecmp(word.word, std::string(text).c_str()) == 0) return word.value;
  }
  return std::nullopt;
}

constexpr Word<const char*> kTerminators[] = {{"LF", "\n"}, {"CR", "\r"}, {"CRLF", "\r\n"}, {"NONE", ""}};

constexpr Word<SerialParity> kParities[] = {
    {"none", SerialParity::kNone}, {"even", SerialParity::kEven}, {"odd", SerialParity::kOdd}};

constexpr Word<AnswerEnd> kReceiveModes[] = {
    {"terminator", AnswerEnd::kTerminator}, {"auto", AnswerEnd::kGap}, {"count", AnswerEnd::kCount}};

constexpr Word<AnswerFormat> kFormats[] = {
    {"text", AnswerFormat::kText}, {"csv", AnswerFormat::kCsv}, {"json", AnswerFormat::kJson}};

}  // namespace

std::optional<std::string> TerminatorValue(std::string_view text) {
  if (const auto word = Find(kTerminators, text)) return *word;
  const auto code = NumberValue<std::int32_t>(text, 0, 255);
  return code ? std::optional(std::string(1, static_cast<char>(*code))) : std::nullopt;
}

std::optional<SerialParity> ParityValue(std::string_view text) { return Find(kParities, text); }

std::optional<AnswerFormat> FormatValue(std::string_view text) { return Find(kFormats, text); }

std::optional<AnswerEnd> ReceiveModeValue(std::string_view text) { return Find(kReceiveModes, text); }

namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

/// One option: how its value is taken, and what is said where there is none to be had.
struct RunOption {
  const char* name;
  bool (*take)(Options& options, const char* value);
  const char* expected;  // null: an option without a value
};

template <typename Value>
bool Take(std::optional<Value>& field, std::optional<Value> value) {
  field = std::move(value);
  return field.has_value();
}

bool TakeText(std::string& field, const char* value) {
  field = value;
  return !field.empty();
}

bool Switch(bool& flag) { return flag = true; }

constexpr RunOption kRunOptions[] = {
    {"connect", [](Options& o, const char* v) { return TakeText(o.run.Connect, v); }, "a RESOURCE"},
    {"folder", [](Options& o, const char* v) { return TakeText(o.folder, v); }, "a folder"},
    {"baud",
     [](Options& o, const char* v) { return Take(o.run.Baud, NumberValue<std::int32_t>(v, 1, kLargest)); },
     "a rate"},
    {"parity", [](Options& o, const char* v) { return Take(o.run.Parity, ParityValue(v)); },
     "none, even or odd"},
    {"data-bits",
     [](Options& o, const char* v) { return Take(o.run.DataBits, NumberValue<std::int16_t>(v, 7, 8)); },
     "7 or 8"},
    {"stop-bits",
     [](Options& o, const char* v) { return Take(o.run.StopBits, NumberValue<std::int16_t>(v, 1, 2)); },
     "1 or 2"},
    {"timeout",
     [](Options& o, const char* v) {
       return Take(o.run.TimeoutMs, NumberValue<std::int32_t>(v, 0, kLargest));
     },
     "a number of milliseconds"},
    {"send-terminator",
     [](Options& o, const char* v) { return Take(o.run.SendTerminator, TerminatorValue(v)); },
     "LF, CR, CRLF, NONE or a character code from 0 to 255"},
    {"receive-terminator",
     [](Options& o, const char* v) { return Take(o.run.ReceiveTerminator, TerminatorValue(v)); },
     "LF, CR, CRLF, NONE or a character code from 0 to 255"},
    {"receive-mode", [](Options& o, const char* v) { return Take(o.run.ReceiveMode, ReceiveModeValue(v)); },
     "terminator, auto or count"},
    {"count",
     [](Options& o, const char* v) {
       return Take(o.run.Count, NumberValue<std::int32_t>(v, 0, CommandRunOptions::kLargestCount));
     },
     "a number of bytes from 0 to 1025"},
    {"format",
     [](Options& o, const char* v) {
       const auto format = FormatValue(v);
       if (format) o.run.Format = *format;
       return format.has_value();
     },
     "text, csv or json"},
    {"fields",
     [](Options& o, const char* v) {
       return Take(o.run.Fields, NumberValue<std::int32_t>(v, 1, CommandRunOptions::kMostFields));
     },
     "a number of columns from 1 to 8192"},
    {"log", [](Options& o, const char* v) { return TakeText(o.run.LogFile, v); }, "a file"},
    {"binary", [](Options& o, const char*) { return Switch(o.run.Binary); }, nullptr},
    {"show-commands", [](Options& o, const char*) { return Switch(o.run.ShowCommands); }, nullptr},
    {"show-times", [](Options& o, const char*) { return Switch(o.run.ShowTimes); }, nullptr},
    {"verbose", [](Options& o, const char*) { return Switch(o.run.Verbose); }, nullptr},
};

constexpr int kHelp = 1000;
constexpr int kFirst = 1001;  // + the index in kRunOptions
constexpr int kWord = 1;      // getopt's own, for an argument that is no option

std::vector<option> LongOptions() {
  std::vector<option> all;
  int value = kFirst;
  for (const RunOption& row : kRunOptions)
    all.push_back({row.name, row.expected == nullptr ? no_argument : required_argument, nullptr, value++});
  all.push_back({"help", no_argument, nullptr, kHelp});
  all.push_back({});
  return all;
}

// `word` is the argument in hand.
void Apply(Options& options, int choice, const char* word) {
  if (choice >= kFirst) {
    const RunOption& row = kRunOptions[choice - kFirst];
    if (!row.take(options, optarg))
      Refuse(options, std::string("--") + row.name + " takes " + row.expected + ", not '" + optarg + "'");
  } else if (choice == kWord) {
    options.words.emplace_back(optarg);
  } else if (choice == kHelp || choice == 'h') {
    options.action = Options::Action::kHelp;
  } else {
    RefuseWord(options, choice, word);
  }
}

// What only shows itself when everything has been read; empty where all fits.
std::string Contradiction(const Options& options) {
  const CommandRunOptions& run = options.run;
  if (options.action == Options::Action::kRun && options.words.size() != 1)
    return options.words.empty() ? "run needs a command list" : "run takes one command list";
  if (options.action == Options::Action::kSend && options.words.empty()) return "send needs a command";
  if (run.Binary && run.ReceiveMode == AnswerEnd::kTerminator)
    return "--binary needs --receive-mode auto or count";
  if (run.Count && run.ReceiveMode && run.ReceiveMode != AnswerEnd::kCount)
    return "--count needs --receive-mode count";
  if (run.Fields && run.Format != AnswerFormat::kCsv) return "--fields needs --format csv";
  return {};
}

}  // namespace

void ParseRunOptions(int argc, char** argv, Options& options) {
  const Options::Action asked = options.action;
  const std::vector<option> long_options = LongOptions();
  optind = 0;
  // "-": commands and options may come in any order, whatever POSIXLY_CORRECT says.
  for (;;) {
    const int at = std::max(optind, 1);
    const int choice = getopt_long(argc, argv, "-:h", long_options.data(), nullptr);
    if (choice == -1) break;
    Apply(options, choice, argv[at]);
    if (options.action != asked) return;
  }
  options.words.insert(options.words.end(), argv + optind, argv + argc);
  if (const std::string why = Contradiction(options); !why.empty()) return Refuse(options, why);
  if (options.run.Count) options.run.ReceiveMode = AnswerEnd::kCount;
}

}  // namespace kolvane::app
