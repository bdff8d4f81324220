#include "devlnk/stream_channel.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cerrno>

#include "base/descriptor.h"

namespace kolvane::devlnk {
namespace {

/// Always ready to be read, yet every call is refused.
class Refusing final : public StreamChannel {
 public:
  explicit Refusing(int error)
      : StreamChannel(50), error_(error), ready_(base::OpenDescriptor("/dev/zero", O_RDWR | O_CLOEXEC)) {}

  int calls = 0;

 private:
  ssize_t Refuse() {
    ++calls;
    errno = error_;
    return -1;
  }
  ssize_t ReadWaiting(std::span<char>) override { return Refuse(); }
  ssize_t ReadNow(std::span<char>) override { return Refuse(); }
  ssize_t WriteNow(std::string_view) override { return Refuse(); }
  int poll_fd() const override { return ready_.get(); }
  Status EndOfInput() const override { return Status::kClosedByPeer; }

  int error_;
  base::Descriptor ready_;
};

class StreamChannelTest : public testing::TestWithParam<int> {
 protected:
  Refusing channel_{GetParam()};
  std::array<char, 16> room_;
};

INSTANTIATE_TEST_SUITE_P(Transient, StreamChannelTest, testing::Values(EAGAIN, EINTR));

TEST_P(StreamChannelTest, AReadThatIsAlwaysRefusedEndsWithTheDeadline) {
  for (const int milliseconds : {0, 5, 120}) {
    Deadline deadline(milliseconds);
    channel_.calls = 0;
    const Received received = channel_.Read(room_, deadline);
    EXPECT_EQ(received.bytes, 0u);
    EXPECT_EQ(received.status, Status::kOk);
    EXPECT_GT(channel_.calls, 0);
  }
}

TEST_P(StreamChannelTest, AWriteThatIsAlwaysRefusedEndsWithTheDeadline) {
  for (const int milliseconds : {0, 5, 120}) {
    Deadline deadline(milliseconds);
    channel_.calls = 0;
    EXPECT_EQ(channel_.Write("A?\n", deadline), Status::kWriteTimeout);
    EXPECT_GT(channel_.calls, 0);
  }
}

}  // namespace
}  // namespace kolvane::devlnk
