#include "devlnk/usb_channel.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>

#include "devlnk/fake_node.h"

namespace kolvane::devlnk {
namespace {

using Calls = std::vector<std::string>;

class UsbChannel : public testing::Test {
 protected:
  void SetUp() override { script_.silence_error = ETIMEDOUT; }
  Status Open() {
    channel_.reset();
    script_.calls.clear();
    Deadline deadline(20'000);
    Opened opened = OpenUsbNode(MakeFakeNode(script_), deadline);
    channel_ = std::move(opened.channel);
    return opened.status;
  }
  void OpenAndClearCalls() {
    ASSERT_EQ(Open(), Status::kOk);
    script_.calls.clear();
  }
  Received Read(std::int32_t milliseconds = 20'000) {
    Deadline deadline(milliseconds);
    return channel_->Read(room_, deadline);
  }
  Status Write(std::string_view bytes, std::int32_t milliseconds = 20'000) {
    Deadline deadline(milliseconds);
    return channel_->Write(bytes, deadline);
  }

  NodeScript script_;
  std::unique_ptr<Channel> channel_;
  std::array<char, 64> room_{};
};

TEST_F(UsbChannel, ClearsTheInstrumentAtOpeningAndFlushing) {
  ASSERT_EQ(Open(), Status::kOk);
  EXPECT_EQ(script_.calls, (Calls{"AUTO_ABORT 1", "CLEAR"}));
  Deadline deadline(20'000);
  channel_->DiscardInput(deadline);
  channel_.reset();
  EXPECT_EQ(script_.calls, (Calls{"AUTO_ABORT 1", "CLEAR", "CLEAR", "close"}));
}

TEST_F(UsbChannel, OpensIfOnlyTheClearFails) {
  script_.failing = {{"AUTO_ABORT", ENOTTY}, {"CLEAR", EPIPE}};
  EXPECT_EQ(Open(), Status::kOk);
  script_.failing = {{"CLEAR", ENOTTY}};
  EXPECT_EQ(Open(), Status::kWrongNode);
  script_.failing = {{"CLEAR", ENODEV}};
  EXPECT_EQ(Open(), Status::kNoSuchNode);
}

TEST_F(UsbChannel, SetsTheDriversTimeoutWhenItChanges) {
  OpenAndClearCalls();
  script_.reads = {{"1.5\n"}, {"2\n"}};
  EXPECT_EQ(Write("MSV?\n"), Status::kOk);
  EXPECT_EQ(Read().bytes, 4u);
  EXPECT_EQ(std::string(room_.data(), 4), "1.5\n");
  EXPECT_EQ(Read(50).bytes, 2u);
  EXPECT_EQ(script_.calls, (Calls{"TIMEOUT 20000", "write MSV?\n", "read", "TIMEOUT 100", "read"}));
}

TEST_F(UsbChannel, AsksForTheStatusByte) {
  OpenAndClearCalls();
  script_.answers = {{"READ_STB", 0x50}};
  std::uint8_t status_byte = 0;
  Deadline deadline(20'000);
  EXPECT_EQ(channel_->ReadStatusByte(status_byte, deadline), Status::kOk);
  EXPECT_EQ(status_byte, 0x50);
  for (const auto& [error, status] :
       {std::pair(ENOTTY, Status::kNotAvailable), std::pair(EPIPE, Status::kNotAvailable),
        std::pair(ETIMEDOUT, Status::kReadTimeout), std::pair(ENODEV, Status::kConnectionLost)}) {
    script_.failing = {{"READ_STB", error}};
    EXPECT_EQ(channel_->ReadStatusByte(status_byte, deadline), status) << error;
  }
}

TEST_F(UsbChannel, WithoutTimeToWaitItAsksNothing) {
  OpenAndClearCalls();
  const Received received = Read(0);
  EXPECT_EQ(received.bytes, 0u);
  EXPECT_EQ(received.status, Status::kOk);
  EXPECT_EQ(script_.calls, Calls{});
}

TEST_F(UsbChannel, GivesUpASilentInstrument) {
  OpenAndClearCalls();
  const Received received = Read(1);
  EXPECT_EQ(received.bytes, 0u);
  EXPECT_EQ(received.status, Status::kOk);
  script_.writes = {{"", ETIMEDOUT}};
  EXPECT_EQ(Write("a"), Status::kWriteTimeout);
}

TEST_F(UsbChannel, ContinuesAfterSignalsAndShortWrites) {
  OpenAndClearCalls();
  script_.reads = {{"", EINTR}, {"x"}};
  EXPECT_EQ(Read().bytes, 1u);
  script_.writes = {{"", EINTR}, {"ab"}};
  EXPECT_EQ(Write("abc"), Status::kOk);
  EXPECT_EQ(script_.calls.back(), "write c");
  script_.writes = {{""}};
  EXPECT_EQ(Write("abc", 0), Status::kWriteTimeout);
}

TEST_F(UsbChannel, IsLostWhenThePlugIsPulled) {
  for (const int error : {ENODEV, EPROTO, EILSEQ, EIO, ENXIO, ESHUTDOWN}) {
    OpenAndClearCalls();
    script_.reads = {{"", error}};
    EXPECT_EQ(Read().status, Status::kConnectionLost) << error;
    script_.writes = {{"", error}};
    EXPECT_EQ(Write("a"), Status::kConnectionLost) << error;
  }
}

TEST_F(UsbChannel, IsNotLostByAStalledPipe) {
  OpenAndClearCalls();
  script_.reads = {{"", EPIPE}};
  EXPECT_EQ(Read().status, Status::kIoError);
}

}  // namespace
}  // namespace kolvane::devlnk
