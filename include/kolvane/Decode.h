#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "kolvane/CommandRun.h"
#include "kolvane/Export.h"

namespace kolvane {

/// Which records of a file to decode, and how to print them. Texts are UTF-8.
struct DecodeOptions {
  std::string File;                         ///< "-": standard input
  std::string Template;                     ///< file of a format template
  std::uint64_t Offset = 0;                 ///< of the first record
  bool Motorola = false;                    ///< high byte first
  std::optional<std::uint64_t> Repeat = 1;  ///< how many consecutive records; empty: to the end
  AnswerFormat Format = AnswerFormat::kText;
};

/// Result of a call.
struct DecodeResult {
  int Status = 0;       ///< 0 done, 1 standard output cannot be written, 2 a file cannot be read or used
  std::string Problem;  ///< why, English, one line
};

// Both read files of any size, and pipes, piece by piece and write to standard output
// (docs/formats/decode.md). They need neither display nor application object.

/// Decodes the records of a file. Errors of template lines go to standard error.
KOLVANE_EXPORT DecodeResult DecodeFile(const DecodeOptions& Options);

/// Prints a hex dump of `File` ("-": standard input) as the binary inspector shows it.
KOLVANE_EXPORT DecodeResult DumpFile(const std::string& File);

}  // namespace kolvane
