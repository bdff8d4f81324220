#pragma once

#include <sys/types.h>

#include "devlnk/channel.h"

namespace kolvane::devlnk {

/// The waiting that all stream descriptors share. The first read of an operation waits inside the read call
/// itself for a slice, so that a prompt answer costs one system call; only what takes longer, or comes in
/// pieces, is waited for with poll.
class StreamChannel : public Channel {
 public:
  /// `slice_ms`: how long ReadWaiting waits.
  explicit StreamChannel(std::int32_t slice_ms) : slice_ms_(slice_ms) {}

  Received Read(std::span<char> room, Deadline& deadline) final;
  Status Write(std::string_view bytes, Deadline& deadline) final;
  std::size_t Waiting() const final;
  int wait_fd() const final { return poll_fd(); }

 protected:
  /// These answer as read(2) and write(2) do, errno included. ReadWaiting gives up after the slice, with 0 or
  /// EAGAIN; the other two never block.
  virtual ssize_t ReadWaiting(std::span<char> room) = 0;
  virtual ssize_t ReadNow(std::span<char> room) = 0;
  virtual ssize_t WriteNow(std::string_view bytes) = 0;

  virtual int poll_fd() const = 0;
  /// What it means that ReadNow returned 0.
  virtual Status EndOfInput() const = 0;
  virtual Status Failure(int error) const { return StatusFromErrno(error); }

 private:
  bool WaitsInRead(const Deadline& deadline) const;

  std::int32_t slice_ms_;
  bool prompt_ = false;  ///< the last answer came before anybody had to be called
};

/// Switches O_NONBLOCK off.
void MakeBlocking(int fd);

}  // namespace kolvane::devlnk
