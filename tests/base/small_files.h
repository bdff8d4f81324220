#pragma once

#include <sys/resource.h>

namespace kolvane::base {

/// Limits every file to `bytes`, like a full disk; ignores the kernel's signal, which would end the process.
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
