#include "terminal/log_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/codepage.h"

namespace kolvane::terminal {

bool LogFile::Open(const std::string& path) {
  Close();
  file_ = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
  return IsOpen();
}

void LogFile::WriteLine(std::string_view line) {
  const std::string bytes = base::ToWindows1252(line) + "\r\n";
  std::string_view rest = bytes;
  while (IsOpen() && !rest.empty()) {
    const ssize_t written = write(file_, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
}

void LogFile::Close() {
  if (IsOpen()) close(file_);
  file_ = -1;
}

}  // namespace kolvane::terminal
