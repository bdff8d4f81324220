#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::terminal {

/// A log on disk: Windows-1252 lines ended by CR LF, appended to what the file holds. Each line has reached
/// the file when WriteLine returns.
class LogFile {
 public:
  /// Opens `path` (UTF-8), made where it does not exist, in place of what was open. Returns 0 or an errno.
  [[nodiscard]] int Open(const std::string& path);
  bool IsOpen() const { return static_cast<bool>(file_); }

  /// Returns 0 or an errno; a line that finds no room in full leaves no part of itself behind.
  [[nodiscard]] int WriteLine(std::string_view line);
  void Close() { file_ = {}; }

 private:
  void TakeBack(off_t size) const;

  base::Descriptor file_;
};

}  // namespace kolvane::terminal
