#pragma once

#include "kolvane/RuntimeError.h"

namespace kolvane::base {
using kolvane::RuntimeError;
}  // namespace kolvane::base
