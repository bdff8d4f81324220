#pragma once

#include <sched.h>
#include <sys/mount.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

namespace kolvane::base {

/// Runs `work` in a thread for which the folder is a disk of 64 kB; other threads do not see it. False if
/// this user may not mount.
template <typename Work>
bool OnSmallDisk(const std::string& folder, Work work) {
  bool mounted = false;
  std::thread thread([&] {
    mounted = unshare(CLONE_NEWNS) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
              mount("none", folder.c_str(), "tmpfs", 0, "size=64k") == 0;
    if (mounted) work();
  });
  thread.join();
  return mounted;
}

/// Fills the disk, then frees up to `spare` bytes.
inline void FillDisk(const std::string& file, std::size_t spare) {
  std::size_t size = 0;
  {
    std::ofstream filler(file, std::ios::binary);
    while (filler << std::string(1024, 'f') << std::flush) size += 1024;
  }
  std::filesystem::resize_file(file, size - std::min(size, spare));
}

}  // namespace kolvane::base
