#include "base/files.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <thread>
#include <utility>

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

namespace fs = std::filesystem;

constexpr int kLinkLimit = 40;
constexpr int kNameTries = 100;
constexpr mode_t kNewMode = 0666;

// flock(2) waits for ever or not at all, and no descriptor signals that a lock was released.
constexpr std::chrono::milliseconds kPause{5};

// Follows a chain of links to its last name; the file itself need not exist.
int FollowLinks(fs::path& path) {
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(path, error)); ++links) {
    if (links == kLinkLimit) return ELOOP;
    path = path.parent_path() / fs::read_symlink(path, error);
    if (error) return error.value();
  }
  return 0;
}

// Creates a new file beside `path` and stores its name in `temporary`.
int CreateTemporary(const fs::path& path, fs::path& temporary) {
  for (int number = 0; number < kNameTries; ++number) {
    temporary = path.parent_path() / (".kolvane-" + std::to_string(getpid()) + "-" + std::to_string(number));
    const int descriptor = Uninterrupted(
        [&] { return open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewMode); });
    if (descriptor >= 0 || errno != EEXIST) return descriptor;
  }
  return -1;
}

// Sets owner and group first, because changing them clears mode bits. Only root may change the owner; others
// may set a group that they belong to, so that its members keep their rights.
bool TakeOver(int descriptor, const struct stat& old) {
  [[maybe_unused]] const bool owned = fchown(descriptor, old.st_uid, old.st_gid) == 0 ||
                                      fchown(descriptor, static_cast<uid_t>(-1), old.st_gid) == 0;
  return fchmod(descriptor, old.st_mode & 07777) == 0;
}

// Makes the new name durable; if the folder cannot be flushed, the file still exists.
void FlushFolder(const fs::path& folder) {
  Descriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) fsync(opened.get());
}

int MoveIntoPlace(const fs::path& temporary, const fs::path& path) {
  return rename(temporary.c_str(), path.c_str()) == 0 ? 0 : errno;
}

// Like MoveIntoPlace, but fails if `path` exists by now. Not every file system supports hard links.
int MoveIfAbsent(const fs::path& temporary, const fs::path& path) {
  if (link(temporary.c_str(), path.c_str()) != 0)
    return errno == EPERM || errno == EOPNOTSUPP ? MoveIntoPlace(temporary, path) : errno;
  unlink(temporary.c_str());
  return 0;
}

int WriteOnce(FileReplacement& file, int opened, std::string_view bytes) {
  if (opened != 0) return opened;
  if (const int error = file.Write(bytes)) return error;
  return file.Commit();
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
    if (count < 0 && !IsTransient(errno)) return errno;
  }
}

FileReplacement::~FileReplacement() {
  if (!temporary_.empty()) unlink(temporary_.c_str());
}

int FileReplacement::Open(const std::string& name) {
  fs::path path = name;
  if (const int error = FollowLinks(path)) return error;
  path_ = path;
  struct stat old {};
  if (stat(path_.c_str(), &old) != 0) return errno == ENOENT ? OpenTemporary() : errno;
  if (!S_ISREG(old.st_mode)) {
    file_ = Descriptor(Uninterrupted([&] { return open(path_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC); }));
    return file_ ? 0 : errno;
  }
  if (faccessat(AT_FDCWD, path_.c_str(), W_OK, AT_EACCESS) != 0) return errno;
  if (const int error = OpenTemporary()) return error;
  return TakeOver(file_.get(), old) ? 0 : errno;
}

int FileReplacement::OpenNew(const std::string& name) {
  struct stat old {};
  if (lstat(name.c_str(), &old) == 0) return EEXIST;
  path_ = name;
  only_new_ = true;
  return OpenTemporary();
}

int FileReplacement::OpenTemporary() {
  fs::path temporary;
  file_ = Descriptor(CreateTemporary(path_, temporary));
  if (!file_) return errno;
  // A move does not allocate and cannot fail: from here on the destructor removes the file.
  temporary_ = std::move(temporary);
  return 0;
}

int FileReplacement::Write(std::string_view bytes) { return WriteAll(file_.get(), bytes); }

int FileReplacement::Commit() {
  if (temporary_.empty()) return file_.Close() ? 0 : errno;
  if (Uninterrupted([&] { return fsync(file_.get()); }) != 0 || !file_.Close()) return errno;
  if (const int error = only_new_ ? MoveIfAbsent(temporary_, path_) : MoveIntoPlace(temporary_, path_))
    return error;
  temporary_.clear();
  FlushFolder(path_.parent_path());
  return 0;
}

int ReplaceFile(const std::string& name, std::string_view bytes) {
  FileReplacement file;
  return WriteOnce(file, file.Open(name), bytes);
}

int CreateFile(const std::string& name, std::string_view bytes) {
  FileReplacement file;
  return WriteOnce(file, file.OpenNew(name), bytes);
}

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds timeout)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (!folder_) return;
  const auto end = std::chrono::steady_clock::now() + timeout;
  while (!(held_ = flock(folder_.get(), LOCK_EX | LOCK_NB) == 0)) {
    if (!IsTransient(errno)) return;
    if (std::chrono::steady_clock::now() >= end) return;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace kolvane::base
