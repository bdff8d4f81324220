#include "base/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <thread>
#include <utility>

#include "base/descriptor.h"

namespace kolvane::base {
namespace {

namespace fs = std::filesystem;

constexpr int kLinkLimit = 40;
constexpr int kNameTries = 100;
constexpr mode_t kNewMode = 0666;

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

// Creates a new file beside `path` and stores its name in `beside`.
int CreateBeside(const fs::path& path, fs::path& beside) {
  for (int number = 0; number < kNameTries; ++number) {
    beside = path.parent_path() / (".kolvane-" + std::to_string(getpid()) + "-" + std::to_string(number));
    const int descriptor = Uninterrupted(
        [&] { return open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewMode); });
    if (descriptor >= 0 || errno != EEXIST) return descriptor;
  }
  return -1;
}

// Sets the owner first, because changing it clears mode bits; not every user may do that.
bool TakeOver(int descriptor, const struct stat& old) {
  [[maybe_unused]] const int owned = fchown(descriptor, old.st_uid, old.st_gid);
  return fchmod(descriptor, old.st_mode & 07777) == 0;
}

// Makes the new name durable; if the folder cannot be flushed, the file still exists.
void FlushFolder(const fs::path& folder) {
  Descriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) fsync(opened.get());
}

int PutInPlace(const fs::path& beside, const fs::path& path) {
  return rename(beside.c_str(), path.c_str()) == 0 ? 0 : errno;
}

// Like PutInPlace, but fails if `path` exists by now. Not every file system supports hard links.
int PutWhereNoneIs(const fs::path& beside, const fs::path& path) {
  if (link(beside.c_str(), path.c_str()) != 0)
    return errno == EPERM || errno == EOPNOTSUPP ? PutInPlace(beside, path) : errno;
  unlink(beside.c_str());
  return 0;
}

int WriteOnce(FileReplacement& file, int opened, std::string_view bytes) {
  if (opened != 0) return opened;
  if (const int error = file.Write(bytes)) return error;
  return file.Commit();
}

}  // namespace

FileReplacement::~FileReplacement() {
  if (!beside_.empty()) unlink(beside_.c_str());
}

int FileReplacement::Open(const std::string& name) {
  fs::path path = name;
  if (const int error = FollowLinks(path)) return error;
  path_ = path;
  struct stat old {};
  if (stat(path_.c_str(), &old) != 0) return errno == ENOENT ? OpenBeside() : errno;
  if (!S_ISREG(old.st_mode)) {
    file_ = Descriptor(Uninterrupted([&] { return open(path_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC); }));
    return file_ ? 0 : errno;
  }
  if (faccessat(AT_FDCWD, path_.c_str(), W_OK, AT_EACCESS) != 0) return errno;
  if (const int error = OpenBeside()) return error;
  return TakeOver(file_.get(), old) ? 0 : errno;
}

int FileReplacement::OpenNew(const std::string& name) {
  struct stat old {};
  if (lstat(name.c_str(), &old) == 0) return EEXIST;
  path_ = name;
  only_new_ = true;
  return OpenBeside();
}

int FileReplacement::OpenBeside() {
  fs::path beside;
  file_ = Descriptor(CreateBeside(path_, beside));
  if (!file_) return errno;
  // A move does not allocate and cannot fail: from here on the destructor removes the file.
  beside_ = std::move(beside);
  return 0;
}

int FileReplacement::Write(std::string_view bytes) { return WriteAll(file_.get(), bytes); }

int FileReplacement::Commit() {
  if (beside_.empty()) return file_.Close() ? 0 : errno;
  if (Uninterrupted([&] { return fsync(file_.get()); }) != 0 || !file_.Close()) return errno;
  if (const int error = only_new_ ? PutWhereNoneIs(beside_, path_) : PutInPlace(beside_, path_)) return error;
  beside_.clear();
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

namespace {

// flock(2) waits for ever or not at all, and no descriptor signals that a lock was released.
constexpr std::chrono::milliseconds kPause{5};

}  // namespace

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds patience)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (!folder_) return;
  const auto end = std::chrono::steady_clock::now() + patience;
  while (!(held_ = flock(folder_.get(), LOCK_EX | LOCK_NB) == 0)) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;
    if (std::chrono::steady_clock::now() >= end) return;
    std::this_thread::sleep_for(kPause);
  }
}

}  // namespace kolvane::base
