#include "base/replace_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <thread>

#include "base/descriptor.h"

namespace kolvane::base {
namespace {

namespace fs = std::filesystem;

constexpr int kLinkLimit = 40;
constexpr int kNameTries = 100;
constexpr mode_t kNewMode = 0666;

// The name at the end of a chain of links; the file itself need not be there.
int FollowLinks(fs::path& path) {
  std::error_code error;
  for (int links = 0; fs::is_symlink(fs::symlink_status(path, error)); ++links) {
    if (links == kLinkLimit) return ELOOP;
    path = path.parent_path() / fs::read_symlink(path, error);
    if (error) return error.value();
  }
  return 0;
}

int WriteInPlace(const fs::path& path, std::string_view bytes) {
  Descriptor file(Uninterrupted([&] { return open(path.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC); }));
  if (!file) return errno;
  if (const int error = WriteAll(file.get(), bytes)) return error;
  return file.Close() ? 0 : errno;
}

// A new file beside `path`, whose name it returns in `beside`.
int CreateBeside(const fs::path& path, fs::path& beside) {
  for (int number = 0; number < kNameTries; ++number) {
    beside = path.parent_path() / (".kolvane-" + std::to_string(getpid()) + "-" + std::to_string(number));
    const int descriptor = Uninterrupted(
        [&] { return open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewMode); });
    if (descriptor >= 0 || errno != EEXIST) return descriptor;
  }
  return -1;
}

// The owner first, since a change of owner takes mode bits away; not everybody may give a file away.
bool TakeOver(int descriptor, const struct stat& old) {
  [[maybe_unused]] const int owned = fchown(descriptor, old.st_uid, old.st_gid);
  return fchmod(descriptor, old.st_mode & 07777) == 0;
}

int Fill(Descriptor& file, const struct stat* old, std::string_view bytes) {
  if (old != nullptr && !TakeOver(file.get(), *old)) return errno;
  if (const int error = WriteAll(file.get(), bytes)) return error;
  return Uninterrupted([&] { return fsync(file.get()); }) == 0 && file.Close() ? 0 : errno;
}

// Makes the new name last; where the folder cannot be flushed the file is there all the same.
void FlushFolder(const fs::path& folder) {
  Descriptor opened(open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (opened) fsync(opened.get());
}

int PutInPlace(const fs::path& beside, const fs::path& path) {
  return rename(beside.c_str(), path.c_str()) == 0 ? 0 : errno;
}

// As PutInPlace, where nothing has come to stand there meanwhile. Not every file system knows second names.
int PutWhereNoneIs(const fs::path& beside, const fs::path& path) {
  if (link(beside.c_str(), path.c_str()) != 0)
    return errno == EPERM || errno == EOPNOTSUPP ? PutInPlace(beside, path) : errno;
  unlink(beside.c_str());
  return 0;
}

int Exchange(const fs::path& path, const struct stat* old, std::string_view bytes,
             int (*put)(const fs::path&, const fs::path&) = &PutInPlace) {
  fs::path beside;
  Descriptor file(CreateBeside(path, beside));
  if (!file) return errno;
  int error = Fill(file, old, bytes);
  if (error == 0) error = put(beside, path);
  if (error != 0) {
    unlink(beside.c_str());
    return error;
  }
  FlushFolder(path.parent_path());
  return 0;
}

}  // namespace

int ReplaceFile(const std::string& name, std::string_view bytes) {
  fs::path path = name;
  if (const int error = FollowLinks(path)) return error;
  struct stat old {};
  if (stat(path.c_str(), &old) != 0) return errno == ENOENT ? Exchange(path, nullptr, bytes) : errno;
  if (!S_ISREG(old.st_mode)) return WriteInPlace(path, bytes);
  if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return errno;
  return Exchange(path, &old, bytes);
}

int CreateFile(const std::string& name, std::string_view bytes) {
  struct stat old {};
  if (lstat(name.c_str(), &old) == 0) return EEXIST;
  return Exchange(name, nullptr, bytes, &PutWhereNoneIs);
}

namespace {

// flock(2) waits for ever or not at all, and no descriptor tells of a lock that is given back.
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
