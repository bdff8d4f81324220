#pragma once

#include "app/options.h"

namespace kolvane::app {

/// Reads what stands behind `run` or `send`, argv[0], into `options`, whose action says which of the two.
void ParseRunOptions(int argc, char** argv, Options& options);

}  // namespace kolvane::app
