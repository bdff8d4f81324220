// USB devices through libdevlnk.so, at nodes that behave as the kernel's.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "devlnk/port_test.h"
#include "emulation/tmc_driver.h"

namespace kolvane::emulation {
namespace {

using devlnk::Answer;
using devlnk::AnswerStatus;
using devlnk::Code;
using devlnk::Status;
using Calls = std::vector<std::string>;

class UsbDeviceTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(IsEmulated());
    QDX_SetTimeout(20'000);
  }
  void TearDown() override { QDX_ClosePort(); }

  void AddInstrument() {
    system_.AddUsb("1-1", {"MY1", "Orbanyx", "Bridge 8"}, "usbmisc", "usbtmc0");
    system_.Attach("usbtmc0", driver_);
  }
  void AddAdapter() {
    system_.AddUsb("1-2", {"A5", "FTDI", "UART"}, "tty", "ttyUSB0");
    system_.AttachLine("ttyUSB0");
  }
  std::int32_t Open(const char* serial) {
    const std::int32_t status = QDX_OpenPort(200, 1, serial, 8, 1, 512);
    return status < 0 ? status : QDX_SelectDevice(1);
  }
  /// The calls of the driver without the time-outs, whose numbers depend on the clock.
  Calls Transfers() {
    Calls calls = driver_.calls();
    std::erase_if(calls, [](const std::string& call) { return call.starts_with("timeout"); });
    return calls;
  }
  void SendLine(std::string_view text) const {
    ASSERT_EQ(write(system_.LineOf("ttyUSB0"), text.data(), text.size()), static_cast<ssize_t>(text.size()));
  }
  std::string ReceiveLine(std::size_t count) const {
    std::string text(count, '\0');
    for (std::size_t got = 0; got < count;) {
      const ssize_t more = read(system_.LineOf("ttyUSB0"), text.data() + got, count - got);
      if (more <= 0) return "(ended)";
      got += static_cast<std::size_t>(more);
    }
    return text;
  }

  TmcDriver driver_;
  EmulatedSystem system_;
};

TEST_F(UsbDeviceTest, AScanNamesInstrumentAndAdapter) {
  AddInstrument();
  AddAdapter();
  std::string buffer(2 * 510, '#');
  ASSERT_EQ(USB_ScanUsbDevice(2, buffer.data()), 0);
  EXPECT_EQ(buffer.substr(0, 4), "MY1 ");
  EXPECT_EQ(buffer.substr(255, 17), "Orbanyx Bridge 8 ");
  EXPECT_EQ(buffer.substr(510, 3), "A5 ");
  EXPECT_EQ(buffer.substr(765, 10), "FTDI UART ");
}

TEST_F(UsbDeviceTest, AnInstrumentIsClearedAndAnswers) {
  AddInstrument();
  ASSERT_EQ(Open("MY1"), 0);
  EXPECT_EQ(QDX_WritePort("*IDN?\n"), 0);
  EXPECT_EQ(Answer(), "*IDN\r\n");
  EXPECT_EQ(QDX_WritePort("A?B?\n"), 0);
  EXPECT_EQ(Answer(3, 0), "A?B");
  EXPECT_EQ(Transfers(), (Calls{"auto-abort", "clear", "write *IDN?", "write A?B?"}));
}

TEST_F(UsbDeviceTest, ASilentInstrumentTimesOutAndStaysUsable) {
  AddInstrument();
  ASSERT_EQ(Open("MY1"), 0);
  ASSERT_EQ(QDX_SetTimeout(1), 0);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  EXPECT_EQ(driver_.calls().back(), "timeout 100") << "the driver's shortest";
  ASSERT_EQ(QDX_SetTimeout(20'000), 0);
  EXPECT_EQ(QDX_WritePort("X?\n"), 0);
  EXPECT_EQ(Answer(), "X\r\n");
}

TEST_F(UsbDeviceTest, AReadThatTheDriverBlocksCanBeGivenUp) {
  AddInstrument();
  ASSERT_EQ(Open("MY1"), 0);
  driver_.Hold();
  int calls = 0;
  QDX_SetWaitHandler([](void* count, std::int32_t) { return ++*static_cast<int*>(count) == 2 ? 1 : 0; },
                     &calls);
  EXPECT_EQ(AnswerStatus(), Code(Status::kGivenUp));
  EXPECT_EQ(calls, 2);
  QDX_SetWaitHandler(nullptr, nullptr);
  driver_.Release();
  EXPECT_EQ(QDX_WritePort("X?\n"), 0);
  EXPECT_EQ(Answer(), "X\r\n");
}

TEST_F(UsbDeviceTest, FlushingMakesTheInstrumentForget) {
  AddInstrument();
  ASSERT_EQ(Open("MY1"), 0);
  EXPECT_EQ(QDX_WritePort("OLD?\n"), 0);
  EXPECT_EQ(QDX_FlushInQueue(), 0);
  EXPECT_EQ(QDX_WritePort("NEW?\n"), 0);
  EXPECT_EQ(Answer(), "NEW\r\n");
  EXPECT_EQ(QDX_ClosePort(), 0);
  EXPECT_EQ(QDX_WritePort("X\n"), Code(Status::kNotOpen));
}

TEST_F(UsbDeviceTest, AnInstrumentThatIsPulledOutIsLost) {
  AddInstrument();
  ASSERT_EQ(Open("MY1"), 0);
  EXPECT_EQ(QDX_WritePort("X?\n"), 0);
  driver_.Unplug();
  system_.RemoveUsb("1-1", "usbmisc", "usbtmc0");
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
  EXPECT_EQ(QDX_WritePort("X?\n"), Code(Status::kConnectionLost));
  EXPECT_EQ(QDX_ClosePort(), 0);
  EXPECT_EQ(Open("MY1"), Code(Status::kNoSuchNode));
}

TEST_F(UsbDeviceTest, AnInstrumentMayComeBack) {
  AddInstrument();
  ASSERT_EQ(Open("MY1"), 0);
  driver_.Unplug();
  EXPECT_EQ(QDX_WritePort("X?\n"), Code(Status::kConnectionLost));
  system_.RemoveUsb("1-1", "usbmisc", "usbtmc0");
  TmcDriver again;
  system_.AddUsb("1-3", {"MY1", "Orbanyx", "Bridge 8"}, "usbmisc", "usbtmc1");
  system_.Attach("usbtmc1", again);
  ASSERT_EQ(Open("MY1"), 0);
  EXPECT_EQ(QDX_WritePort("X?\n"), 0);
  EXPECT_EQ(Answer(), "X\r\n");
  QDX_ClosePort();
  system_.Detach("usbtmc1");
}

TEST_F(UsbDeviceTest, AnAdapterIsItsLine) {
  AddAdapter();
  ASSERT_EQ(Open("A5"), 0);
  EXPECT_EQ(QDX_WritePort("MSV?\n"), 0);
  EXPECT_EQ(ReceiveLine(5), "MSV?\n");
  SendLine("1.5\r\n2.5\r\n");
  EXPECT_EQ(Answer(), "1.5\r\n");
  EXPECT_EQ(Answer(), "2.5\r\n");
  ASSERT_EQ(QDX_SetTimeout(1), 0);
  EXPECT_EQ(AnswerStatus(), Code(Status::kReadTimeout));
  SendLine("left");
  ASSERT_EQ(QDX_SetTimeout(20'000), 0);
  EXPECT_EQ(Answer(1, 0), "l");
  EXPECT_EQ(QDX_FlushInQueue(), 3);
}

TEST_F(UsbDeviceTest, AnAdapterThatIsPulledOutIsLost) {
  AddAdapter();
  ASSERT_EQ(Open("A5"), 0);
  const int line = system_.LineOf("ttyUSB0");
  system_.RemoveUsb("1-2", "tty", "ttyUSB0");
  // Closes the line's other end if the emulation has kept it open.
  if (fcntl(line, F_GETFD) >= 0) close(line);
  EXPECT_EQ(AnswerStatus(), Code(Status::kConnectionLost));
  EXPECT_EQ(QDX_WritePort("X\n"), Code(Status::kConnectionLost));
  EXPECT_EQ(Open("A5"), Code(Status::kNoSuchNode));
}

}  // namespace
}  // namespace kolvane::emulation
