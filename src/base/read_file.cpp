#include "base/read_file.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>

#include "base/descriptor.h"

namespace kolvane::base {
namespace {

constexpr std::size_t kPiece = 65536;
constexpr int kSliceMs = 50;

// The name may lead to a pipe or a line without a peer: neither opening nor reading waits there.
Descriptor OpenToRead(const std::string& name) {
  return Descriptor(open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

bool IsRegular(int descriptor) {
  struct stat status {};
  return fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

// Waits until there is something to read, or the end, and returns 0. A regular file never waits.
int AwaitPiece(int descriptor, bool regular, const GiveUp& give_up) {
  for (int waited = 0; !give_up(waited);) {
    if (regular) return 0;
    pollfd entry{descriptor, POLLIN, 0};
    const int ready = poll(&entry, 1, kSliceMs);
    if (ready > 0) return 0;
    if (ready == 0) waited += kSliceMs;
    if (ready < 0 && errno != EINTR) return errno;
  }
  return ETIMEDOUT;
}

// `size` is only a hint: the file may change while it is read.
int ReadAll(int descriptor, std::size_t size, std::string& bytes) {
  for (std::size_t have = 0;;) {
    bytes.resize(have + (have < size ? size - have + 1 : kPiece));
    const ssize_t count =
        Uninterrupted([&] { return read(descriptor, bytes.data() + have, bytes.size() - have); });
    if (count < 0) return errno;
    have += static_cast<std::size_t>(count);
    if (count > 0) continue;
    bytes.resize(have);
    return 0;
  }
}

}  // namespace

int ReadFile(const std::string& name, std::string& bytes) {
  bytes.clear();
  const Descriptor file = OpenToRead(name);
  if (!file) return errno;
  struct stat status {};
  if (fstat(file.get(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return 0;
  const int error = ReadAll(file.get(), static_cast<std::size_t>(status.st_size), bytes);
  if (error != 0) bytes.clear();
  return error;
}

int ReadPieces(const std::string& name, const TakePiece& take, const GiveUp& give_up) {
  const Descriptor file = OpenToRead(name);
  if (!file) return errno;
  const bool regular = IsRegular(file.get());
  std::array<char, kPiece> piece;
  for (;;) {
    if (const int error = AwaitPiece(file.get(), regular, give_up); error != 0) return error;
    const ssize_t count = read(file.get(), piece.data(), piece.size());
    if (count == 0) return 0;
    if (count > 0 && !take({piece.data(), static_cast<std::size_t>(count)})) return 0;
    if (count < 0 && errno != EINTR && errno != EAGAIN) return errno;
  }
}

}  // namespace kolvane::base
