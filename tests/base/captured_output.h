#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <string>

namespace kolvane::base {

/// A descriptor whose text can be read back.
class CapturedOutput {
 public:
  CapturedOutput() : fd_(memfd_create("output", MFD_CLOEXEC)) {}
  ~CapturedOutput() { close(fd_); }
  CapturedOutput(const CapturedOutput&) = delete;
  CapturedOutput& operator=(const CapturedOutput&) = delete;

  int fd() const { return fd_; }
  std::string text() const {
    std::string all(static_cast<std::size_t>(lseek(fd_, 0, SEEK_END)), '\0');
    const ssize_t got = pread(fd_, all.data(), all.size(), 0);
    all.resize(got < 0 ? 0 : static_cast<std::size_t>(got));
    return all;
  }

 private:
  int fd_;
};

}  // namespace kolvane::base
