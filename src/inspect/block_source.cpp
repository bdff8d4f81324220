#include "inspect/block_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace kolvane::inspect {
namespace {

constexpr std::size_t kPiece = 1 << 20;

}  // namespace

void BlockSource::SetBytes(std::string bytes) {
  bytes_ = std::move(bytes);
  size_ = bytes_.size();
  file_ = base::Descriptor();
}

int BlockSource::Open(const std::string& file) {
  base::Descriptor opened(
      base::Uninterrupted([&] { return open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); }));
  struct stat what {};
  if (!opened || fstat(opened.get(), &what) != 0) return errno;
  if (S_ISDIR(what.st_mode)) return EISDIR;
  if (!S_ISREG(what.st_mode)) return EINVAL;
  file_ = std::move(opened);
  bytes_.clear();
  size_ = static_cast<std::uint64_t>(what.st_size);
  return 0;
}

std::string BlockSource::Read(std::uint64_t offset, std::size_t count) const {
  if (offset >= size_) return {};
  if (!file_) return bytes_.substr(static_cast<std::size_t>(offset), count);
  std::string bytes(static_cast<std::size_t>(std::min<std::uint64_t>(count, size_ - offset)), '\0');
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t got = base::Uninterrupted([&] {
      return pread(file_.get(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(offset + done));
    });
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  bytes.resize(done);
  return bytes;
}

std::optional<std::uint64_t> BlockSource::Find(std::string_view bytes, std::uint64_t from) const {
  if (const auto found = FindBetween(bytes, from, size_)) return found;
  return FindBetween(bytes, 0, std::min(from + bytes.size() - 1, size_));
}

// Pieces overlap, so that a hit across their border is found.
std::optional<std::uint64_t> BlockSource::FindBetween(std::string_view bytes, std::uint64_t from,
                                                      std::uint64_t end) const {
  for (std::uint64_t at = from; at + bytes.size() <= end; at += kPiece) {
    const auto wanted = std::min<std::uint64_t>(kPiece + bytes.size() - 1, end - at);
    const std::string piece = Read(at, static_cast<std::size_t>(wanted));
    if (const std::size_t hit = piece.find(bytes); hit != std::string::npos) return at + hit;
  }
  return std::nullopt;
}

}  // namespace kolvane::inspect
