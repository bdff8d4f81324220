#pragma once

#include <utility>

#include "devlnk/background_work.h"
#include "devlnk/sysfs.h"

namespace kolvane::devlnk {

/// What `scan(root, deadline)` finds in the system's record of devices. Returns within two seconds even where
/// the record does not answer, then with nothing.
template <typename Scan>
auto ScanInTime(Scan scan, Waiting* waiting = nullptr) {
  constexpr std::int32_t kLongestMs = 1500;
  Deadline deadline(kLongestMs, waiting);
  auto found = RunWithDeadline(deadline, [scan, root = sysfs::Root()] {
    Deadline own(kLongestMs);
    return scan(root, own);
  });
  return found ? std::move(*found) : typename decltype(found)::value_type();
}

}  // namespace kolvane::devlnk
