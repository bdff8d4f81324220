#include "devlnk/devlnk.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>

#include "devlnk/port_test.h"

namespace kolvane::devlnk {
namespace {

constexpr std::int32_t kInvalid = Code(Status::kInvalidArgument);
constexpr std::int32_t kClosed = Code(Status::kNotOpen);
constexpr std::int16_t kNoPorts[] = {0, -1, 3, 11, 92, 101, 32'767};
constexpr std::int32_t kMissing = Code(Status::kNotAvailable);

class Interface : public testing::Test {
 protected:
  void SetUp() override {
    setenv("KOLVANE_GPIB_LIBRARY", "/nowhere/libgpib.so.0", 1);
    QDX_SetTimeout(20'000);
  }
  void TearDown() override { QDX_ClosePort(); }
  void OpenLoopback() { ASSERT_EQ(QDX_OpenPort(100, 1, "127.0.0.1", listener_.port(), 1, 512), 0); }

  base::Listener listener_{AF_INET};
};

TEST(SharedObject, ExportsItsFunctionsAndNothingElse) {
  std::set<std::string> exported;
  FILE* list = popen("nm -D --defined-only --format=just-symbols " DEVLNK_LIBRARY, "r");
  ASSERT_NE(list, nullptr);
  char line[256];
  while (std::fgets(line, sizeof line, list) != nullptr) {
    const std::string name(line);
    exported.insert(name.substr(0, name.find('\n')));
  }
  ASSERT_EQ(pclose(list), 0);
  EXPECT_EQ(exported, (std::set<std::string>{
                          "QDX_OpenPort",           "QDX_SelectDevice",      "QDX_SetTimeout",
                          "QDX_SetGPIBCtrlBlock",   "QDX_EnableNTPortIO",    "QDX_WritePort",
                          "QDX_ReadPort",           "QDX_FlushInQueue",      "QDX_ActivateInterpreter",
                          "QDX_CloseInterpreterEx", "QDX_ClosePort",         "QDX_Delay",
                          "USB_GetMaxUsbDevice",    "USB_ScanUsbDevice",     "QDX_SetNode",
                          "QDX_SetWaitHandler",     "QDX_BytesWaiting",      "QDX_WaitDescriptor",
                          "QDX_StatusText",         "KOLVANE_NewPortSession"}));
}

TEST_F(Interface, TransfersNeedAnOpenPort) {
  char byte = '#';
  EXPECT_EQ(QDX_SelectDevice(1), kClosed);
  EXPECT_EQ(QDX_WritePort("x"), kClosed);
  EXPECT_EQ(QDX_ReadPort(&byte, 1, nullptr, nullptr, 10), kClosed);
  EXPECT_EQ(byte, '#');
  EXPECT_EQ(QDX_FlushInQueue(), kClosed);
  EXPECT_EQ(QDX_ActivateInterpreter(200), kClosed);
  EXPECT_EQ(QDX_CloseInterpreterEx(100, 1), kClosed);
}

TEST_F(Interface, OtherFunctionsNeedNoOpenPort) {
  EXPECT_EQ(QDX_ClosePort(), 0);
  EXPECT_EQ(QDX_SetTimeout(0), 0);
  EXPECT_EQ(QDX_Delay(0), 0);
  EXPECT_EQ(QDX_Delay(1), 0);
  EXPECT_EQ(QDX_Delay(-1), kInvalid);
}

TEST_F(Interface, AnOpenPortCanBeSelectedActivatedAndClosed) {
  OpenLoopback();
  EXPECT_EQ(QDX_SelectDevice(0), 0);
  EXPECT_EQ(QDX_SelectDevice(31), 0);
  EXPECT_EQ(QDX_SelectDevice(32), kInvalid);
  EXPECT_EQ(QDX_SelectDevice(-1), kInvalid);
  EXPECT_EQ(QDX_ActivateInterpreter(200), 0);
  EXPECT_EQ(QDX_CloseInterpreterEx(100, 1), 0);
  EXPECT_EQ(QDX_ClosePort(), 0);
  EXPECT_EQ(QDX_ClosePort(), 0);
}

TEST_F(Interface, ReadArgumentsHaveTheirLimits) {
  OpenLoopback();
  QDX_SetTimeout(0);
  char byte = '#';
  const std::int32_t silent = Code(Status::kReadTimeout);
  EXPECT_EQ(QDX_ReadPort(&byte, 1, nullptr, nullptr, 255), silent);
  EXPECT_EQ(QDX_ReadPort(&byte, 1, nullptr, nullptr, 256), kInvalid);
  EXPECT_EQ(QDX_ReadPort(&byte, 1, nullptr, nullptr, -1), kInvalid);
  EXPECT_EQ(QDX_ReadPort(&byte, -1, nullptr, nullptr, 0), kInvalid);
  EXPECT_EQ(QDX_ReadPort(nullptr, 1, nullptr, nullptr, 0), kInvalid);
  EXPECT_EQ(QDX_ReadPort(nullptr, 0, nullptr, nullptr, 0), 0);
  EXPECT_EQ(QDX_ReadPort(&byte, 16 << 20, nullptr, nullptr, 0), silent);
  EXPECT_EQ(QDX_ReadPort(&byte, (16 << 20) + 1, nullptr, nullptr, 0), kInvalid);
  EXPECT_EQ(QDX_WritePort(nullptr), kInvalid);
  EXPECT_EQ(byte, '#');
}

TEST_F(Interface, ANegativeTimeoutKeepsTheOldOne) {
  OpenLoopback();
  QDX_SetTimeout(0);
  EXPECT_EQ(QDX_SetTimeout(-1), kInvalid);
  char byte = '#';
  EXPECT_EQ(QDX_ReadPort(&byte, 1, nullptr, nullptr, 0), Code(Status::kReadTimeout));
}

TEST_F(Interface, PortKindsThatAreMissingAreReported) {
  EXPECT_EQ(QDX_OpenPort(488, 1, "", 8, 1, 512), kMissing);
  for (const std::int16_t port : kNoPorts) EXPECT_EQ(QDX_OpenPort(port, 1, "", 8, 1, 512), kInvalid) << port;
}

TEST_F(Interface, TheGpibControlBlockIsChecked) {
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(1, 0, 1, 255, 0, 1, 0), kMissing);
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(2, 0, 0, 10, 0, 0, 1000), kInvalid);
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(0, 2, 0, 10, 0, 0, 1000), kInvalid);
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(0, 0, -1, 10, 0, 0, 1000), kInvalid);
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(0, 0, 0, 256, 0, 0, 1000), kInvalid);
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(0, 0, 0, 10, 1, 0, 1000), kInvalid);
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(0, 0, 0, 10, 0, 2, 1000), kInvalid);
  EXPECT_EQ(QDX_SetGPIBCtrlBlock(0, 0, 0, 10, 0, 0, -1), kInvalid);
}

TEST_F(Interface, OnlyPortsWithADeviceNodeTakeOne) {
  for (const std::int16_t port : std::initializer_list<std::int16_t>{1, 2, 10, 20, 90, 91, 488})
    EXPECT_EQ(QDX_SetNode(port, nullptr), 0) << port;
  EXPECT_EQ(QDX_SetNode(100, "/dev/ttyS0"), kInvalid);
  EXPECT_EQ(QDX_SetNode(200, nullptr), kInvalid);
  for (const std::int16_t port : kNoPorts) EXPECT_EQ(QDX_SetNode(port, "/dev/ttyS0"), kInvalid) << port;
}

TEST_F(Interface, OnlyParallelPortsAreEnabled) {
  EXPECT_EQ(QDX_EnableNTPortIO(90), 0);
  EXPECT_EQ(QDX_EnableNTPortIO(91), 0);
  EXPECT_EQ(QDX_EnableNTPortIO(1), kInvalid);
}

}  // namespace
}  // namespace kolvane::devlnk
