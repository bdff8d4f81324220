#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::base {

/// Reads the file `name`. Returns 0, or an errno with `bytes` empty. A device or pipe, which could block for
/// ever, is not read and counts as empty.
[[nodiscard]] int ReadFile(const std::string& name, std::string& bytes);

/// Receives a piece that was read; false if no more is needed.
using TakePiece = std::function<bool(std::string_view piece)>;
/// Called with 0 before each piece, and about every 50 ms while waiting for one; true ends the reading.
using GiveUp = std::function<bool(int waited_ms)>;

/// Passes the bytes of `name`, which may be a pipe or a device, to `take` as they arrive. Returns 0 or an
/// errno: ETIMEDOUT if `give_up` ended it.
[[nodiscard]] int ReadPieces(const std::string& name, const TakePiece& take, const GiveUp& give_up);

/// Replaces the content of a file piece by piece, or leaves it unchanged: the pieces are written to a file
/// beside it, which takes its name at Commit and is deleted if that is never called. Each step returns 0 or
/// an errno; after an errno no further step may follow.
class FileReplacement {
 public:
  FileReplacement() = default;
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  /// Mode bits are kept, symbolic links followed. Anything but a regular file is written to directly.
  [[nodiscard]] int Open(const std::string& name);
  /// EEXIST if the file exists, even if it was created just before Commit.
  [[nodiscard]] int OpenNew(const std::string& name);
  [[nodiscard]] int Write(std::string_view bytes);
  [[nodiscard]] int Commit();

 private:
  int OpenTemporary();

  Descriptor file_;
  std::filesystem::path path_;
  std::filesystem::path temporary_;  // empty: written to directly
  bool only_new_ = false;
};

/// Replaces the content of the file `name` by `bytes`.
[[nodiscard]] int ReplaceFile(const std::string& name, std::string_view bytes);

/// Creates the file `name` with the content `bytes`, or returns an errno: EEXIST if it exists, even if it was
/// created at the same moment.
[[nodiscard]] int CreateFile(const std::string& name, std::string_view bytes);

/// Makes every other FolderLock on the same folder wait, in this and other processes, for as long as this one
/// lives. Advisory, and a waiter continues after `timeout`: a holder that was stopped must not stop others.
/// Leaves no file; the system releases it when the process ends.
class FolderLock {
 public:
  static constexpr std::chrono::milliseconds kLockTimeout{2000};

  explicit FolderLock(const std::string& folder, std::chrono::milliseconds timeout = kLockTimeout);

  /// False if the folder cannot be opened, or another holder kept it for all of `timeout`.
  bool IsHeld() const { return held_; }

 private:
  Descriptor folder_;
  bool held_ = false;
};

}  // namespace kolvane::base
