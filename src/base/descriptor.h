#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace kolvane::base {

/// Returns the result of a system call, which is repeated if a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
  decltype(call()) result{};
  do {
    result = call();
  } while (result < 0 && errno == EINTR);
  return result;
}

/// Whether a system call that failed with this errno may succeed if repeated.
constexpr bool IsTransient(int error) { return error == EINTR || error == EAGAIN; }

/// Whether a read would return at once; does not wait.
inline bool IsReadable(int descriptor) {
  pollfd entry{descriptor, POLLIN, 0};
  return Uninterrupted([&entry] { return poll(&entry, 1, 0); }) > 0;
}

/// Whether the other side has ended the connection, even if received bytes are still unread.
inline bool HasHungUp(int descriptor) {
  pollfd entry{descriptor, POLLRDHUP, 0};
  return Uninterrupted([&entry] { return poll(&entry, 1, 0); }) > 0;
}

/// Waits until an event of poll(2), or an error, is there.
inline void Await(int descriptor, short event) {
  pollfd entry{descriptor, event, 0};
  Uninterrupted([&entry] { return poll(&entry, 1, -1); });
}

/// Owns a file descriptor; a negative one means none.
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
  /// False, with errno set, if closing fails; the object is empty afterwards in any case.
  bool Close() { return close(std::exchange(number_, -1)) == 0; }

 private:
  int number_ = -1;
};

/// Opens /dev/null in place of each standard descriptor that is closed: otherwise the next file opened would
/// become it. For the start of a program.
void FillStandardDescriptors();

/// open(2), repeated if a signal interrupts it; empty, with errno set, if it fails.
inline Descriptor OpenDescriptor(const std::string& path, int flags) {
  return Descriptor(Uninterrupted([&] { return open(path.c_str(), flags); }));
}

/// Opens a file for appending; creates it with `mode` if needed. Empty, with errno set, if that fails.
/// Nothing waits for the reader of a pipe: without one this fails with ENXIO, and a write to a full one with
/// EAGAIN.
Descriptor OpenForAppending(const std::string& path, mode_t mode = 0666);

/// Writes all of `bytes` to an open descriptor. Returns 0 or an errno. A file that may not grow further
/// (EFBIG) and a pipe without a reader (EPIPE) are reported this way too, not as signals. Bytes written
/// before a failure stay; `written`, if given, receives their number.
[[nodiscard]] int WriteAll(int descriptor, std::string_view bytes, std::size_t* written = nullptr);

/// Like WriteAll, but waits where the descriptor does not: terminals and pipes are shared with programs that
/// make them non-blocking.
[[nodiscard]] int WriteAllWaiting(int descriptor, std::string_view bytes);

/// Like WriteAll, to a file open for appending. After a failure the bytes already written are removed again,
/// so that the file ends as before, except from a pipe or if another program has written after them.
[[nodiscard]] int AppendWhole(int descriptor, std::string_view bytes);

}  // namespace kolvane::base
