#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <utility>

#include "base/uninterrupted.h"

namespace kolvane::base {

/// Owns a file descriptor; negative is none.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }

  int get() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }
  /// False where closing fails, with its errno; there is none afterwards in any case.
  bool Close() { return close(std::exchange(number_, -1)) == 0; }

 private:
  int number_ = -1;
};

/// open(2), made again whenever a signal interrupts it; empty where it fails, with its errno.
inline Descriptor OpenDescriptor(const std::string& path, int flags) {
  return Descriptor(Uninterrupted([&] { return open(path.c_str(), flags); }));
}

}  // namespace kolvane::base
