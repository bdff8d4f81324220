#pragma once

#include "kolvane/Decode.h"

namespace kolvane::headless {

/// Like DecodeFile, with the descriptors of standard output and standard error.
DecodeResult Decode(const DecodeOptions& options, int out_descriptor, int error_descriptor);

/// Like DumpFile, with the descriptor of standard output.
DecodeResult Dump(const std::string& file, int out_descriptor);

}  // namespace kolvane::headless
