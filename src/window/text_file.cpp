#include "window/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/descriptor.h"
#include "base/uninterrupted.h"
#include "window/text_decoder.h"

namespace kolvane::window {
namespace {

constexpr std::size_t kPieceBytes = 256 * 1024;

class InputFile {
 public:
  // Without waiting: what is no regular file is refused below.
  explicit InputFile(const std::string& name)
      : descriptor_(open(name.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)), error_(errno) {}

  // 0 or an errno.
  int Size(std::size_t& size) const {
    if (!descriptor_) return error_;
    struct stat status {};
    if (fstat(descriptor_.get(), &status) != 0) return errno;
    if (S_ISDIR(status.st_mode)) return EISDIR;
    if (!S_ISREG(status.st_mode)) return ENODEV;
    size = static_cast<std::size_t>(status.st_size);
    return 0;
  }

  // The next piece, an empty one at the end; 0 or an errno.
  int Read(std::string& piece) {
    piece.resize(kPieceBytes);
    const ssize_t count =
        base::Uninterrupted([&] { return read(descriptor_.get(), piece.data(), piece.size()); });
    piece.resize(static_cast<std::size_t>(count < 0 ? 0 : count));
    return count < 0 ? errno : 0;
  }

 private:
  base::Descriptor descriptor_;
  int error_;
};

}  // namespace

int ReadTextFile(const std::string& name, terminal::PaneText& text, const ProgressStep& step) {
  InputFile file(name);
  std::size_t size = 0;
  if (const int error = file.Size(size)) return error;
  TextDecoder decoder;
  std::string piece;
  for (std::size_t done = 0; step(done, size); done += piece.size()) {
    if (const int error = file.Read(piece)) return error;
    text.AppendText(piece.empty() ? decoder.Finish() : decoder.Decode(piece), 0);
    if (!piece.empty()) continue;
    text.MoveTo(0);
    return 0;
  }
  return ECANCELED;
}

}  // namespace kolvane::window
