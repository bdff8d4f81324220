#pragma once

#include <string>
#include <string_view>

#include "terminal/log_sink.h"

namespace kolvane::terminal {

/// A log on disk: Windows-1252 lines ended by CR LF, appended to what the file holds. Each line has reached
/// the file when WriteLine returns.
class LogFile final : public LogSink {
 public:
  LogFile() = default;
  ~LogFile() override { Close(); }
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;

  /// Opens `path` (UTF-8), made where it does not exist; false with the reason in errno.
  [[nodiscard]] bool Open(const std::string& path);
  bool IsOpen() const { return file_ >= 0; }

  /// Does nothing where no log is open. A line that cannot be written is lost.
  void WriteLine(std::string_view line) override;
  void Close() override;

 private:
  int file_ = -1;
};

}  // namespace kolvane::terminal
