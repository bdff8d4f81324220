#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/options.h"
#include "kolvane/CommandRun.h"

/// Parsers of option values; nothing if `text` is not valid.
namespace kolvane::app {

/// LF, CR, CRLF and NONE in any case, or a character code from 0 to 255; returns the bytes.
std::optional<std::string> TerminatorValue(std::string_view text);

/// none, even and odd.
std::optional<SerialParity> ParityValue(std::string_view text);

/// text, csv and json.
std::optional<AnswerFormat> FormatValue(std::string_view text);

/// terminator, auto and count.
std::optional<AnswerEnd> ReceiveModeValue(std::string_view text);

/// Whether `send` reads its commands from standard input: "-" instead of commands.
bool ReadsCommands(const Options& options);

/// Parses the arguments of `run`, `send` or `shell`, argv[0], into `options`, whose action is already set.
void ParseRunOptions(int argc, char** argv, Options& options);

/// Parses the arguments of `decode`, argv[0], into `options`.
void ParseDecodeOptions(int argc, char** argv, Options& options);

/// Parses the arguments of `dump`, argv[0], whose one word is the file.
void ParseDumpOptions(int argc, char** argv, Options& options);

}  // namespace kolvane::app
