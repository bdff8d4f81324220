#pragma once

#include "kolvane/Decode.h"

namespace kolvane::headless {

/// As DecodeFile, with the descriptors of standard output and standard error.
DecodeResult Decode(const DecodeOptions& options, int out, int err);

/// As DumpFile.
DecodeResult Dump(const std::string& file, int out);

}  // namespace kolvane::headless
