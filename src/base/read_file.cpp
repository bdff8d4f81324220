#include "base/read_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

#include "base/descriptor.h"
#include "base/uninterrupted.h"

namespace kolvane::base {
namespace {

constexpr std::size_t kPiece = 65536;

// The size is only a hint: the file may change meanwhile.
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
  const Descriptor file(open(name.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file) return errno;
  struct stat status {};
  if (fstat(file.get(), &status) != 0) return errno;
  if (S_ISDIR(status.st_mode)) return EISDIR;
  if (!S_ISREG(status.st_mode)) return 0;
  const int error = ReadAll(file.get(), static_cast<std::size_t>(status.st_size), bytes);
  if (error != 0) bytes.clear();
  return error;
}

}  // namespace kolvane::base
