#pragma once

#include <cstddef>
#include <string>
#include <utility>

#include "devlnk/deadline.h"

namespace kolvane::devlnk {

/// Owns a file descriptor.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int fd) : fd_(fd) {}
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  ~Descriptor();

  int get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }

 private:
  int fd_ = -1;
};

/// open(2), tried again whenever a signal interrupts it; empty where it fails, with its errno.
Descriptor OpenDescriptor(const std::string& path, int flags);

/// Waits until one of `events` (of poll) or a hang-up shows, whatever signals arrive; false when the
/// deadline is over.
bool WaitFor(int fd, short events, Deadline& deadline);

/// What the system holds unread of a stream; 0 where it cannot tell.
std::size_t BytesToRead(int fd);

/// Switches O_NONBLOCK off.
void MakeBlocking(int fd);

}  // namespace kolvane::devlnk
