#pragma once

#include <sys/resource.h>
#include <unistd.h>

namespace kolvane::base {

/// No further descriptor is available while it lives.
class NoDescriptors {
 public:
  NoDescriptors() {
    getrlimit(RLIMIT_NOFILE, &old_);
    const int next = dup(0);
    close(next);
    const rlimit none{static_cast<rlim_t>(next), old_.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
  }
  ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &old_); }
  NoDescriptors(const NoDescriptors&) = delete;
  NoDescriptors& operator=(const NoDescriptors&) = delete;

 private:
  rlimit old_{};
};

}  // namespace kolvane::base
