#pragma once

#include <unistd.h>

#include "base/resource_limit.h"

namespace kolvane::base {

/// No further descriptor is available while it lives.
class NoDescriptors : ResourceLimit {
 public:
  NoDescriptors() : ResourceLimit(RLIMIT_NOFILE, NextDescriptor()) {}

 private:
  static rlim_t NextDescriptor() {
    const int next = dup(0);
    close(next);
    return static_cast<rlim_t>(next);
  }
};

}  // namespace kolvane::base
