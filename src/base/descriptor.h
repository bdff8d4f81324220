#pragma once

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kolvane::base {

/// The result of a system call, which is made again whenever a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
  decltype(call()) result{};
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

/// Whether a read would return at once; asks without waiting.
inline bool IsReadable(int descriptor) {
  pollfd entry{descriptor, POLLIN, 0};
  return Uninterrupted([&entry] { return poll(&entry, 1, 0); }) > 0;
}

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

/// Writes all of `bytes` to an open descriptor. Returns 0 or an errno; a file that may not grow further
/// (EFBIG) and a pipe that nobody reads (EPIPE) are such failures too, not signals. What was written before
/// a failure stays; `written`, where given, is how much that was.
[[nodiscard]] int WriteAll(int descriptor, std::string_view bytes, std::size_t* written = nullptr);

/// As WriteAll to a file that is open for appending; what was written of `bytes` before a failure is taken
/// back, so that the file ends as it did. Not from a pipe, and not where another program has written after
/// it.
[[nodiscard]] int AppendWhole(int descriptor, std::string_view bytes);

}  // namespace kolvane::base
