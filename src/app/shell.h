#pragma once

#include "app/options.h"

namespace kolvane::app {

/// Runs `kolvane shell`: with a line editor if standard input and standard output are a terminal, otherwise
/// line by line. Returns the exit status.
int RunShell(const Options& options);

}  // namespace kolvane::app
