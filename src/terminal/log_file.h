#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>

namespace kolvane::terminal {

/// A log on disk: Windows-1252 lines ended by CR LF, appended to what the file holds. Each line has reached
/// the file when WriteLine returns.
class LogFile {
 public:
  LogFile() = default;
  ~LogFile() { Close(); }
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;

  /// Opens `path` (UTF-8), made where it does not exist, in place of what was open. Returns 0 or an errno.
  [[nodiscard]] int Open(const std::string& path);
  bool IsOpen() const { return file_ >= 0; }

  /// Returns 0 or an errno; a line that finds no room in full leaves no part of itself behind.
  [[nodiscard]] int WriteLine(std::string_view line);
  void Close();

 private:
  void TakeBack(off_t size) const;

  int file_ = -1;
};

}  // namespace kolvane::terminal
