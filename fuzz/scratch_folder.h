#pragma once

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <string>
#include <string_view>

#include "fuzz/require.h"

namespace kolvane::fuzz {

/// A folder in memory, removed when the process ends normally; avoids the cost of a file system.
class ScratchFolder {
 public:
  ScratchFolder() {
    std::string name = "/dev/shm/kolvane-fuzz-XXXXXX";
    if (access("/dev/shm", W_OK) != 0) name = "/tmp/kolvane-fuzz-XXXXXX";
    Require(mkdtemp(name.data()) != nullptr);
    path_ = name;
  }
  ~ScratchFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
  }
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::string& path() const { return path_; }
  std::string operator/(std::string_view name) const { return path_ + "/" + std::string(name); }

  /// Gives the file these bytes and a new time, so that caches that compare times read it again.
  void Put(const std::string& name, std::string_view bytes) {
    const int file = open((*this / name).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    Require(file >= 0);
    Require(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    const timespec times[2] = {{++now_, 0}, {now_, 0}};
    Require(futimens(file, times) == 0);
    close(file);
  }

 private:
  std::string path_;
  std::time_t now_ = 0;
};

}  // namespace kolvane::fuzz
