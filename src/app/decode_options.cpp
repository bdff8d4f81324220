#include "app/decode_options.h"

#include <limits>
#include <span>

#include "app/run_options.h"
#include "base/number.h"
#include "base/option_table.h"

namespace kolvane::app {
namespace {

constexpr std::uint64_t kLargestOffset = std::numeric_limits<std::int64_t>::max();
using Value = std::string_view;

bool TakeOffset(Options& options, Value value) {
  const bool hex = value.starts_with("0x") || value.starts_with("0X");
  const auto offset =
      base::NumberValue<std::uint64_t>(hex ? value.substr(2) : value, 0, kLargestOffset, hex ? 16 : 10);
  options.decode.Offset = offset.value_or(0);
  return offset.has_value();
}

bool TakeRepeat(Options& options, Value value) {
  options.decode.Repeat = base::NumberValue<std::uint64_t>(value, 1, kLargestOffset);
  return options.decode.Repeat || value == "all";
}

bool TakeFormat(Options& options, Value value) {
  const auto format = FormatValue(value);
  options.decode.Format = format.value_or(AnswerFormat::kText);
  return format.has_value();
}

constexpr base::OptionRow<Options> kDecodeOptions[] = {
    {"template", "a file", [](Options& o, Value v) { return !(o.decode.Template = v).empty(); }},
    {"offset", "a number of bytes (0x for hexadecimal)", TakeOffset},
    {"motorola", nullptr, [](Options& o, Value) { return o.decode.Motorola = true; }},
    {"repeat", "a number of records or all", TakeRepeat},
    {"format", "text, csv or json", TakeFormat},
};

// The one file that both take.
void ParseFile(int argc, char** argv, std::span<const base::OptionRow<Options>> rows, Options& options) {
  const Options::Action asked = options.action;
  ParseWords(argc, argv, rows, options);
  if (options.action != asked || options.words.size() == 1) return;
  Refuse(options, std::string(argv[0]) +
                      (options.words.empty() ? " needs a file, or - for standard input" : " takes one file"));
}

}  // namespace

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
