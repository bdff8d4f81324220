#include "app/command_options.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "base/number.h"
#include "base/option_table.h"
#include "base/text.h"

namespace kolvane::app {
namespace {

using base::NumberValue;

template <typename Value>
struct Word {
  const char* word;
  Value value;
};

template <typename Value, std::size_t size>
std::optional<Value> Find(const Word<Value> (&words)[size], std::string_view text) {
  for (const Word<Value>& word : words) {
    if (base::EqualsNoCase(word.word, text)) return word.value;
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

constexpr std::uint64_t kLargestOffset = std::numeric_limits<std::int64_t>::max();
using Value = std::string_view;

// Stores `value` if there is one; returns whether there is.
template <typename Field, typename Parsed>
bool Take(Field& field, const std::optional<Parsed>& value) {
  if (value) field = *value;
  return value.has_value();
}

bool TakeText(std::string& field, Value value) {
  field = value;
  return !field.empty();
}

bool TakeOffset(Options& options, Value value) {
  const bool hex = value.starts_with("0x") || value.starts_with("0X");
  return Take(options.decode.Offset,
              NumberValue<std::uint64_t>(hex ? value.substr(2) : value, 0, kLargestOffset, hex ? 16 : 10));
}

bool TakeRepeat(Options& options, Value value) {
  options.decode.Repeat = NumberValue<std::uint64_t>(value, 1, kLargestOffset);
  return options.decode.Repeat || value == "all";
}

constexpr base::OptionRow<Options> kDecodeOptions[] = {
    {"template", "a file", [](Options& o, Value v) { return TakeText(o.decode.Template, v); }},
    {"offset", "a number of bytes (0x for hexadecimal)", TakeOffset},
    {"motorola", nullptr, [](Options& o, Value) { return o.decode.Motorola = true; }},
    {"repeat", "a number of records or all", TakeRepeat},
    {"format", "text, csv or json",
     [](Options& o, Value v) { return Take(o.decode.Format, FormatValue(v)); }},
};

// `decode` and `dump` take exactly one file.
void ParseFile(int argc, char** argv, std::span<const base::OptionRow<Options>> rows, Options& options) {
  const Options::Action asked = options.action;
  ParseWords(argc, argv, rows, options);
  if (options.action != asked || options.words.size() == 1) return;
  Refuse(options, std::string(argv[0]) +
                      (options.words.empty() ? " needs a file, or - for standard input" : " takes one file"));
}

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

constexpr Word<bool> kTranscriptTimes[] = {{"all", true}, {"none", false}};
constexpr Word<bool> kQueriesOnly[] = {{"always", false}, {"queries", true}};

constexpr std::int32_t kLargestNumber = std::numeric_limits<std::int32_t>::max();

constexpr const char* kTerminatorForm = "LF, CR, CRLF, NONE or a character code from 0 to 255";

constexpr base::OptionRow<Options> kRunOptions[] = {
    {"connect", "a RESOURCE", [](Options& o, Value v) { return TakeText(o.run.Connect, v); }},
    {"folder", "a folder", [](Options& o, Value v) { return TakeText(o.folder, v); }},
    {"baud", "a rate",
     [](Options& o, Value v) { return Take(o.run.Baud, NumberValue<std::int32_t>(v, 1, kLargestNumber)); }},
    {"parity", "none, even or odd", [](Options& o, Value v) { return Take(o.run.Parity, ParityValue(v)); }},
    {"data-bits", "7 or 8",
     [](Options& o, Value v) { return Take(o.run.DataBits, NumberValue<std::int16_t>(v, 7, 8)); }},
    {"stop-bits", "1 or 2",
     [](Options& o, Value v) { return Take(o.run.StopBits, NumberValue<std::int16_t>(v, 1, 2)); }},
    {"timeout", "a number of milliseconds",
     [](Options& o, Value v) {
       return Take(o.run.TimeoutMs, NumberValue<std::int32_t>(v, 0, kLargestNumber));
     }},
    {"send-terminator", kTerminatorForm,
     [](Options& o, Value v) { return Take(o.run.SendTerminator, TerminatorValue(v)); }},
    {"receive-terminator", kTerminatorForm,
     [](Options& o, Value v) { return Take(o.run.ReceiveTerminator, TerminatorValue(v)); }},
    {"receive-mode", "terminator, auto or count",
     [](Options& o, Value v) { return Take(o.run.ReceiveMode, ReceiveModeValue(v)); }},
    {"count", "a number of bytes from 0 to 1025",
     [](Options& o, Value v) {
       return Take(o.run.Count, NumberValue<std::int32_t>(v, 0, CommandRunOptions::kLargestCount));
     }},
    {"format", "text, csv or json", [](Options& o, Value v) { return Take(o.run.Format, FormatValue(v)); }},
    {"fields", "a number of columns from 1 to 8192",
     [](Options& o, Value v) {
       return Take(o.run.Fields, NumberValue<std::int32_t>(v, 1, CommandRunOptions::kMostFields));
     }},
    {"repeat", "a number of times from 1",
     [](Options& o, Value v) { return Take(o.run.Repeat, NumberValue<std::int32_t>(v, 1, kLargestNumber)); }},
    {"every", "a number of milliseconds from 1",
     [](Options& o, Value v) {
       return Take(o.run.EveryMs, NumberValue<std::int32_t>(v, 1, kLargestNumber));
     }},
    {"transcript", "a file", [](Options& o, Value v) { return TakeText(o.run.Transcript, v); }},
    {"transcript-times", "all or none",
     [](Options& o, Value v) { return Take(o.run.TranscriptTimes, Find(kTranscriptTimes, v)); }},
    {"log", "a file", [](Options& o, Value v) { return TakeText(o.run.LogFile, v); }},
    {"binary", nullptr, [](Options& o, Value) { return o.run.Binary = true; }},
    {"show-commands", nullptr, [](Options& o, Value) { return o.run.ShowCommands = true; }},
    {"show-times", nullptr, [](Options& o, Value) { return o.run.ShowTimes = true; }},
    {"verbose", nullptr, [](Options& o, Value) { return o.run.Verbose = true; }},
    {"answers", "always or queries",
     [](Options& o, Value v) { return Take(o.run.QueriesOnly, Find(kQueriesOnly, v)); }},
    {"flush", nullptr, [](Options& o, Value) { return o.run.Flush = true; }},
    {"blocks", nullptr, [](Options& o, Value) { return o.run.Blocks = true; }},
    {"no-device-words", nullptr, [](Options& o, Value) { return !(o.run.DeviceWords = false); }},
    {"reconnect", nullptr, [](Options& o, Value) { return o.run.Reconnect = true; }},
    {"utf8", nullptr, [](Options& o, Value) { return o.run.Utf8 = true; }},
    {"no-errors", nullptr, [](Options& o, Value) { return !(o.run.ErrorLines = false); }},
    {"timestamps", nullptr, [](Options& o, Value) { return o.run.TimeStamps = true; }},
};

constexpr const char* kStandardInput = "-";

// An error that shows only once everything has been parsed; empty if there is none.
std::string Contradiction(const Options& options) {
  const CommandRunOptions& run = options.run;
  if (options.action == Options::Action::kRun && options.words.size() != 1)
    return options.words.empty() ? "run needs a command list" : "run takes one command list";
  if (options.action == Options::Action::kSend && options.words.empty()) return "send needs a command";
  if (options.action == Options::Action::kSend && options.words.size() > 1 &&
      std::ranges::find(options.words, kStandardInput) != options.words.end())
    return "- stands for the commands of standard input and takes no others";
  if (options.action == Options::Action::kShell && !options.words.empty()) return "shell takes no commands";
  if (options.action == Options::Action::kShell && (run.Repeat || run.EveryMs))
    return "--repeat and --every are for run and send";
  if (ReadsCommands(options) && (run.Repeat || run.EveryMs))
    return "--repeat and --every need commands, not standard input";
  if (run.Binary && run.ReceiveMode == AnswerEnd::kTerminator)
    return "--binary needs --receive-mode auto or count";
  if (run.Count && run.ReceiveMode && run.ReceiveMode != AnswerEnd::kCount)
    return "--count needs --receive-mode count";
  if (run.Fields && run.Format != AnswerFormat::kCsv) return "--fields needs --format csv";
  return {};
}

}  // namespace

bool ReadsCommands(const Options& options) {
  return options.action == Options::Action::kSend &&
         options.words == std::vector<std::string>{kStandardInput};
}

void ParseRunOptions(int argc, char** argv, Options& options) {
  const Options::Action asked = options.action;
  ParseWords(argc, argv, kRunOptions, options);
  if (options.action != asked) return;
  if (const std::string why = Contradiction(options); !why.empty()) return Refuse(options, why);
  if (options.run.Count) options.run.ReceiveMode = AnswerEnd::kCount;
}

void ParseDecodeOptions(int argc, char** argv, Options& options) {
  options.action = Options::Action::kDecode;
  ParseFile(argc, argv, kDecodeOptions, options);
  if (options.action != Options::Action::kDecode) return;
  if (options.decode.Template.empty()) return Refuse(options, "decode needs --template T.BNS");
  options.decode.File = options.words.front();
}

void ParseDumpOptions(int argc, char** argv, Options& options) {
  options.action = Options::Action::kDump;
  ParseFile(argc, argv, {}, options);
}

}  // namespace kolvane::app
