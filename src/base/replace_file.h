#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::base {

/// Gives a file a new content that comes piece by piece, or leaves it as it was: the pieces go into a file
/// beside it, which takes its name at Commit and is gone where that is never called. Each step returns 0 or
/// an errno, after which no further one may follow.
class FileReplacement {
 public:
  FileReplacement() = default;
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  /// Mode bits are kept, symbolic links followed. What is no regular file is written to directly.
  [[nodiscard]] int Open(const std::string& name);
  /// EEXIST where there is such a file, even if it was made by the time of Commit.
  [[nodiscard]] int OpenNew(const std::string& name);
  [[nodiscard]] int Write(std::string_view bytes);
  [[nodiscard]] int Commit();

 private:
  int OpenBeside();

  Descriptor file_;
  std::filesystem::path path_;
  std::filesystem::path beside_;  // empty: written to directly
  bool only_new_ = false;
};

/// The same with a content that is there as a whole.
[[nodiscard]] int ReplaceFile(const std::string& name, std::string_view bytes);

/// Makes the file `name` with the content `bytes`, or returns an errno: EEXIST where there is one, even if it
/// was made at the same moment.
[[nodiscard]] int CreateFile(const std::string& name, std::string_view bytes);

/// Keeps every other FolderLock on the same folder waiting, in this process and in others, for as long as it
/// lives. Advisory and patient only for `patience`: a holder that was stopped must not stop others. It leaves
/// no file, and the system frees it with its process.
class FolderLock {
 public:
  static constexpr std::chrono::milliseconds kPatience{2000};

  explicit FolderLock(const std::string& folder, std::chrono::milliseconds patience = kPatience);

  /// False where the folder cannot be opened, or somebody else held it to the end.
  bool IsHeld() const { return held_; }

 private:
  Descriptor folder_;
  bool held_ = false;
};

}  // namespace kolvane::base
