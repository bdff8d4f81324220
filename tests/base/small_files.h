#pragma once

#include <sys/resource.h>

namespace kolvane::base {

/// Limits every file to `bytes`, like a full disk. A write beyond that ends the process by SIGXFSZ unless the
/// signal is blocked.
class SmallFiles {
 public:
  explicit SmallFiles(rlim_t bytes) {
    getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit small{bytes, old_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &old_); }
  SmallFiles(const SmallFiles&) = delete;
  SmallFiles& operator=(const SmallFiles&) = delete;

 private:
  rlimit old_{};
};

}  // namespace kolvane::base
