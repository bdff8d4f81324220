#include "terminal/log_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/codepage.h"
#include "base/uninterrupted.h"
#include "base/write_all.h"

namespace kolvane::terminal {

int LogFile::Open(const std::string& path) {
  Close();
  if (path.find('\0') != path.npos) return EINVAL;
  // A pipe whose reader is slow or missing must not hold the terminal up.
  file_ = base::Descriptor(base::Uninterrupted(
      [&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC, 0666); }));
  return IsOpen() ? 0 : errno;
}

int LogFile::WriteLine(std::string_view line) {
  std::size_t written = 0;
  const int error = base::WriteAll(file_.get(), base::ToWindows1252(line) + "\r\n", &written);
  if (error != 0 && written > 0) TakeBack(static_cast<off_t>(written));
  return error;
}

// A pipe has no such thing, and behind another program's lines nothing can be taken back.
void LogFile::TakeBack(off_t size) const {
  struct stat about {};
  const off_t end = lseek(file_.get(), 0, SEEK_CUR);
  if (fstat(file_.get(), &about) != 0 || !S_ISREG(about.st_mode) || about.st_size != end) return;
  [[maybe_unused]] const int result = ftruncate(file_.get(), end - size);
}

}  // namespace kolvane::terminal
