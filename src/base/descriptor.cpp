#include "base/descriptor.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace kolvane::base {
namespace {

// Keeps the signals that accompany two failures of write() from ending the process. Their handlers belong to
// the host, so they are masked for one call only.
class BlockedFailureSignals {
 public:
  BlockedFailureSignals() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGXFSZ);
    sigaddset(&signals_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals_, &old_);
  }
  ~BlockedFailureSignals() { pthread_sigmask(SIG_SETMASK, &old_, nullptr); }
  BlockedFailureSignals(const BlockedFailureSignals&) = delete;
  BlockedFailureSignals& operator=(const BlockedFailureSignals&) = delete;

  void TakePending() {
    const timespec at_once{};
    while (sigtimedwait(&signals_, nullptr, &at_once) > 0) {
    }
  }

 private:
  sigset_t signals_{};
  sigset_t old_{};
};

}  // namespace

void FillStandardDescriptors() {
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDWR);
  if (descriptor > STDERR_FILENO) close(descriptor);
}

Descriptor OpenForAppending(const std::string& path, mode_t mode) {
  return Descriptor(Uninterrupted(
      [&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_NONBLOCK | O_CLOEXEC, mode); }));
}

int WriteAll(int descriptor, std::string_view bytes, std::size_t* written) {
  BlockedFailureSignals blocked;
  std::size_t done = 0;
  int error = 0;
  while (error == 0 && done < bytes.size()) {
    const ssize_t step = write(descriptor, bytes.data() + done, bytes.size() - done);
    if (step > 0) {
      done += static_cast<std::size_t>(step);
    } else if (step == 0 || errno != EINTR) {
      error = step < 0 ? errno : EIO;
      blocked.TakePending();
    }
  }
  if (written != nullptr) *written = done;
  return error;
}

int WriteAllWaiting(int descriptor, std::string_view bytes) {
  std::size_t written = 0;
  for (int error = 0; (error = WriteAll(descriptor, bytes, &written)) != 0; bytes.remove_prefix(written)) {
    if (error != EAGAIN) return error;
    Await(descriptor, POLLOUT);
  }
  return 0;
}

namespace {

void RemoveLast(int descriptor, off_t size) {
  struct stat about {};
  const off_t end = lseek(descriptor, 0, SEEK_CUR);
  if (fstat(descriptor, &about) != 0 || !S_ISREG(about.st_mode) || about.st_size != end) return;
  [[maybe_unused]] const int result = ftruncate(descriptor, end - size);
}

}  // namespace

int AppendWhole(int descriptor, std::string_view bytes) {
  std::size_t written = 0;
  const int error = WriteAll(descriptor, bytes, &written);
  if (error != 0 && written > 0) RemoveLast(descriptor, static_cast<off_t>(written));
  return error;
}

}  // namespace kolvane::base
