#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::base {

/// Gives the file `name` the content `bytes`, or leaves it as it was. Returns 0 or an errno. Mode bits are
/// kept, symbolic links followed. What is no regular file is written to directly.
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
