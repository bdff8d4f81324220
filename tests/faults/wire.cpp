#include "faults/wire.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace kolvane::faults {

Wire::Wire(int fd, int end_of_fault) : fd_(fd), end_of_fault_(end_of_fault) {
  fcntl(fd, F_SETFL, fcntl(fd, F_GETFL) | O_NONBLOCK);
}

bool Wire::Await(short events) {
  pollfd entries[] = {{fd_, events, 0}, {end_of_fault_, POLLIN, 0}};
  while (poll(entries, 2, -1) < 0 && errno == EINTR) {
  }
  return entries[1].revents == 0;
}

std::optional<std::string> Wire::Line() {
  for (;;) {
    const std::size_t end = input_.find('\n');
    if (end != std::string::npos || input_.size() > kLongLine) {
      std::string line = input_.substr(0, end);
      input_.erase(0, end == std::string::npos ? end : end + 1);
      return line;
    }
    char chunk[4096];
    if (!Await(POLLIN)) return std::nullopt;
    const ssize_t got = read(fd_, chunk, sizeof chunk);
    if (got < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (got <= 0) return std::nullopt;
    input_.append(chunk, static_cast<std::size_t>(got));
  }
}

bool Wire::Send(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!Await(POLLOUT)) return false;
    const ssize_t sent = write(fd_, bytes.data(), bytes.size());
    if (sent < 0 && (errno == EINTR || errno == EAGAIN)) continue;
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

bool Wire::Drip(std::string_view bytes, int gap_ms) {
  return std::all_of(bytes.begin(), bytes.end(), [&](const char& byte) {
    return Send({&byte, 1}) && Pause(gap_ms);
  });
}

bool Wire::Pause(int milliseconds) {
  pollfd entry{end_of_fault_, POLLIN, 0};
  return poll(&entry, 1, milliseconds) == 0;
}

void Wire::AwaitEndOfFault() {
  pollfd entry{end_of_fault_, POLLIN, 0};
  while (poll(&entry, 1, -1) < 0 && errno == EINTR) {
  }
  std::uint64_t taken = 0;
  [[maybe_unused]] const ssize_t got = read(end_of_fault_, &taken, sizeof taken);
}

void Wire::ResetAtEnd() {
  const linger at_once{1, 0};
  setsockopt(fd_, SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
}

}  // namespace kolvane::faults
