#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "app/options.h"
#include "kolvane/CommandRun.h"

/// The values that options take; nothing for any other text.
namespace kolvane::app {

/// LF, CR, CRLF and NONE in any case, or a character code from 0 to 255; the bytes they stand for.
std::optional<std::string> TerminatorValue(std::string_view text);

/// none, even and odd.
std::optional<SerialParity> ParityValue(std::string_view text);

/// text, csv and json.
std::optional<AnswerFormat> FormatValue(std::string_view text);

/// terminator, auto and count.
std::optional<AnswerEnd> ReceiveModeValue(std::string_view text);

/// Whether `send` takes its commands from standard input: "-" in their place.
bool ReadsCommands(const Options& options);

/// Reads what stands after `run`, `send` or `shell`, argv[0], into `options`, whose action says which.
void ParseRunOptions(int argc, char** argv, Options& options);

/// Reads what follows `decode`, argv[0], into `options`.
void ParseDecodeOptions(int argc, char** argv, Options& options);

/// The same for `dump`, whose one word is the file.
void ParseDumpOptions(int argc, char** argv, Options& options);

}  // namespace kolvane::app
