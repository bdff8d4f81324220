#pragma once

#include <sys/types.h>

#include "devlnk/channel.h"

namespace kolvane::devlnk {

/// The waiting shared by all stream descriptors. The first read of an operation waits in the read call itself
/// for a slice, so that a prompt answer costs one system call; longer waits, and answers that come in pieces,
/// use poll.
class StreamChannel : public Channel {
 public:
  /// `slice_ms`: how long ReadWaiting waits.
  explicit StreamChannel(std::int32_t slice_ms) : slice_ms_(slice_ms) {}

  Received Read(std::span<char> room, Deadline& deadline) final;
  Status Write(std::string_view bytes, Deadline& deadline) final;
  std::size_t Waiting() const final;
  int wait_fd() const final { return poll_fd(); }

 protected:
  /// These return like read(2) and write(2), errno included. ReadWaiting returns 0 or EAGAIN after the slice;
  /// the other two never block.
  virtual ssize_t ReadWaiting(std::span<char> room) = 0;
  virtual ssize_t ReadNow(std::span<char> room) = 0;
  virtual ssize_t WriteNow(std::string_view bytes) = 0;

  virtual int poll_fd() const = 0;
  /// The meaning of a 0 from ReadNow.
  virtual Status EndOfInput() const = 0;
  virtual Status Failure(int error) const { return StatusFromErrno(error); }

 private:
  bool WaitsInRead(const Deadline& deadline) const;

  std::int32_t slice_ms_;
  bool prompt_ = false;  ///< the last answer came before the handler was due
};

/// Clears O_NONBLOCK.
void MakeBlocking(int fd);

}  // namespace kolvane::devlnk
