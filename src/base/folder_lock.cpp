#include "base/folder_lock.h"

#include <fcntl.h>
#include <sys/file.h>

#include <cerrno>
#include <thread>

namespace kolvane::base {
namespace {

// flock(2) waits for ever or not at all, and no descriptor tells of a lock that is given back.
constexpr std::chrono::milliseconds kPause{5};

}  // namespace

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds patience)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (!folder_) return;
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!(held_ = flock(folder_.get(), LOCK_EX | LOCK_NB) == 0)) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;
    if (std::chrono::steady_clock::now() >= end) return;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace kolvane::base
