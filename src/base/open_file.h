#pragma once

#include <unistd.h>

#include <utility>

namespace kolvane::base {

/// Owns a descriptor; negative is none.
class OpenFile {
 public:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ~OpenFile() {
    if (descriptor_ >= 0) close(descriptor_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  int get() const { return descriptor_; }
  bool Close() { return close(std::exchange(descriptor_, -1)) == 0; }

 private:
  int descriptor_;
};

}  // namespace kolvane::base
