#include "window/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/descriptor.h"
#include "base/encoding.h"

namespace kolvane::window {

std::string TextDecoder::Decode(std::string_view bytes) {
  if (!std::exchange(started_, true)) {
    utf8_ = bytes.starts_with(base::kUtf8Mark);
    if (utf8_) bytes.remove_prefix(base::kUtf8Mark.size());
  }
  pending_ += bytes;
  const std::size_t complete = Complete();
  std::string piece = pending_.substr(0, complete);
  pending_.erase(0, complete);
  return utf8_ ? piece : base::FromWindows1252(piece);
}

std::string TextDecoder::Finish() {
  const std::string rest = std::exchange(pending_, {});
  return utf8_ ? rest : base::FromWindows1252(rest);
}

std::size_t TextDecoder::Complete() const {
  const std::size_t held_back = utf8_ ? base::UnfinishedUtf8(pending_) : 0;
  return pending_.size() - (pending_.ends_with('\r') ? 1 : held_back);
}

namespace {

constexpr std::size_t kPieceBytes = 256 * 1024;

class InputFile {
 public:
  // Without blocking: anything but a regular file is refused below.
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

  // Reads the next piece, an empty one at the end; returns 0 or an errno.
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

int ReadTextFile(const std::string& name, pane::PaneText& text, const ProgressStep& step) {
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
