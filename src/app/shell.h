#pragma once

#include "app/options.h"

namespace kolvane::app {

/// Carries on the conversation of `kolvane shell`: with a line editor where standard input and standard
/// output are a terminal, else line by line. Returns the exit status.
int RunShell(const Options& options);

}  // namespace kolvane::app
