#include "devlnk/descriptor.h"

#include <fcntl.h>
#include <poll.h>
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
  for (;;) {
    const int ready = poll(&entry, 1, deadline.RemainingMs());
    if (ready >= 0 || errno != EINTR) return ready > 0;
  }
}

void MakeBlocking(int fd) { fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK); }

}  // namespace kolvane::devlnk
