#include "devlnk/descriptor.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>

namespace kolvane::devlnk {

Descriptor::~Descriptor() {
  if (fd_ >= 0) close(fd_);
}

Descriptor OpenDescriptor(const std::string& path, int flags) {
  for (;;) {
    Descriptor opened(open(path.c_str(), flags));
    if (opened || errno != EINTR) return opened;
  }
}

bool WaitFor(int fd, short events, Deadline& deadline) {
  pollfd entry{fd, events, 0};
  do {
    const int ready = poll(&entry, 1, deadline.SliceMs());
    if (ready > 0) return true;
    if (ready < 0 && errno != EINTR) return false;
  } while (deadline.Continue());
  return false;
}

std::size_t BytesToRead(int fd) {
  int count = 0;
  return ioctl(fd, FIONREAD, &count) == 0 && count > 0 ? static_cast<std::size_t>(count) : 0;
}

void MakeBlocking(int fd) { fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK); }

}  // namespace kolvane::devlnk
