#include "base/write_all.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>

namespace kolvane::base {
namespace {

// Keeps the signals that come along with two failures of write() from ending the process. Their handlers
// belong to the host, hence a mask for the time of one call.
class QuietFailures {
 public:
  QuietFailures() {
    sigemptyset(&signals_);
    sigaddset(&signals_, SIGXFSZ);
    sigaddset(&signals_, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals_, &old_);
  }
  ~QuietFailures() { pthread_sigmask(SIG_SETMASK, &old_, nullptr); }
  QuietFailures(const QuietFailures&) = delete;
  QuietFailures& operator=(const QuietFailures&) = delete;

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

int WriteAll(int descriptor, std::string_view bytes) {
  QuietFailures quiet;
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      const int error = written < 0 ? errno : EIO;
      quiet.TakePending();
      return error;
    }
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

}  // namespace kolvane::base
