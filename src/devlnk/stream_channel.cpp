#include "devlnk/stream_channel.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>

#include <cerrno>

#include "base/descriptor.h"

namespace kolvane::devlnk {

// A slice longer than the handler's pace is used only after a prompt answer.
[[gnu::hot]] bool StreamChannel::WaitsInRead(const Deadline& deadline) const {
  if (deadline.started() || deadline.total_ms() < slice_ms_) return false;
  return slice_ms_ <= Waiting::kPaceMs || prompt_ || !deadline.attended();
}

[[gnu::hot]] Received StreamChannel::Read(std::span<char> room, Deadline& deadline) {
  if (WaitsInRead(deadline)) {
    deadline.Start();
    const ssize_t got = ReadWaiting(room);
    if (got > 0) return {static_cast<std::size_t>(got)};
    if (got < 0 && !base::IsTransient(errno)) return {0, Failure(errno)};
  }
  prompt_ = false;
  while (WaitFor(poll_fd(), POLLIN, deadline)) {
    const ssize_t got = ReadNow(room);
    if (got > 0) {
      prompt_ = !deadline.called();
      return {static_cast<std::size_t>(got)};
    }
    if (got == 0) return {0, EndOfInput()};
    if (!base::IsTransient(errno)) return {0, Failure(errno)};
    // A descriptor may report ready again and again without delivering a byte.
    if (deadline.HasExpired()) break;
  }
  return {};
}

[[gnu::hot]] Status StreamChannel::Write(std::string_view bytes, Deadline& deadline) {
  while (!bytes.empty()) {
    const ssize_t sent = WriteNow(bytes);
    if (sent > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(sent));
      if (!bytes.empty()) deadline.Attend();
      continue;
    }
    if (sent < 0 && !base::IsTransient(errno)) return Failure(errno);
    if (!deadline.Continue() || !WaitFor(poll_fd(), POLLOUT, deadline)) return Status::kWriteTimeout;
  }
  return Status::kOk;
}

std::size_t StreamChannel::Waiting() const {
  int count = 0;
  return ioctl(poll_fd(), FIONREAD, &count) == 0 ? static_cast<std::size_t>(count) : 0;
}

void MakeBlocking(int fd) { fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) & ~O_NONBLOCK); }

}  // namespace kolvane::devlnk
