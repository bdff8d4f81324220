#pragma once

#include "app/options.h"

namespace kolvane::app {

/// Reads what follows `decode`, argv[0], into `options`.
void ParseDecodeOptions(int argc, char** argv, Options& options);

/// The same for `dump`, whose one word is the file.
void ParseDumpOptions(int argc, char** argv, Options& options);

}  // namespace kolvane::app
