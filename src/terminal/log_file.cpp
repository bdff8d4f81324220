#include "terminal/log_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "base/codepage.h"
#include "base/write_all.h"

namespace kolvane::terminal {

int LogFile::Open(const std::string& path) {
  Close();
  if (path.find('\0') != path.npos) return EINVAL;
  // A pipe whose reader is slow or missing must not hold the terminal up.
  do {
    file_ = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC, 0666);
  } while (!IsOpen() && errno == EINTR);
  return IsOpen() ? 0 : errno;
}

int LogFile::WriteLine(std::string_view line) {
  return base::WriteAll(file_, base::ToWindows1252(line) + "\r\n");
}

void LogFile::Close() {
  if (IsOpen()) close(file_);
  file_ = -1;
}

}  // namespace kolvane::terminal
