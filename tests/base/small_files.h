#pragma once

#include "base/resource_limit.h"

namespace kolvane::base {

/// Limits every file to `bytes`, like a full disk. A write beyond that ends the process by SIGXFSZ unless the
/// signal is blocked.
class SmallFiles : ResourceLimit {
 public:
  explicit SmallFiles(rlim_t bytes) : ResourceLimit(RLIMIT_FSIZE, bytes) {}
};

}  // namespace kolvane::base
