#include "devlnk/stream_channel.h"

#include <poll.h>

#include <cerrno>

#include "devlnk/descriptor.h"

namespace kolvane::devlnk {
namespace {

bool IsTransient(int error) { return error == EINTR || error == EAGAIN; }

}  // namespace

Received StreamChannel::Read(std::span<char> room, Deadline& deadline) {
  if (!deadline.started() && deadline.total_ms() >= kSliceMs) {
    deadline.Start();
    const ssize_t got = ReadWaiting(room);
    if (got > 0) return {static_cast<std::size_t>(got)};
    if (got < 0 && !IsTransient(errno)) return {0, Failure(errno)};
  }
  while (WaitFor(poll_fd(), POLLIN, deadline)) {
    const ssize_t got = ReadNow(room);
    if (got > 0) return {static_cast<std::size_t>(got)};
    if (got == 0) return {0, EndOfInput()};
    if (!IsTransient(errno)) return {0, Failure(errno)};
    // A descriptor may go on saying that it is ready and yet give nothing.
    if (deadline.IsOver()) break;
  }
  return {};
}

Status StreamChannel::Write(std::string_view bytes, Deadline& deadline) {
  while (!bytes.empty()) {
    const ssize_t sent = WriteNow(bytes);
    if (sent > 0) {
      bytes.remove_prefix(static_cast<std::size_t>(sent));
      continue;
    }
    if (sent < 0 && !IsTransient(errno)) return Failure(errno);
    if (deadline.IsOver() || !WaitFor(poll_fd(), POLLOUT, deadline)) return Status::kWriteTimeout;
  }
  return Status::kOk;
}

}  // namespace kolvane::devlnk
