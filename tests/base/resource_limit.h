#pragma once

#include <sys/resource.h>

namespace kolvane::base {

/// Limits a resource of this process while it lives.
class ResourceLimit {
 public:
  ResourceLimit(__rlimit_resource resource, rlim_t limit) : resource_(resource) {
    getrlimit(resource_, &old_);
    const rlimit lower{limit, old_.rlim_max};
    setrlimit(resource_, &lower);
  }
  ~ResourceLimit() { setrlimit(resource_, &old_); }
  ResourceLimit(const ResourceLimit&) = delete;
  ResourceLimit& operator=(const ResourceLimit&) = delete;

 private:
  __rlimit_resource resource_;
  rlimit old_{};
};

}  // namespace kolvane::base
