#include <gtest/gtest.h>

#include "device/device_state.h"
#include "device_rig.h"

namespace kolvane::device {
namespace {

constexpr char kAnswer[] = "Test mode answer at 24.10.2026 08:00:00";

class Offline : public testing::Test, public DeviceRig {
 protected:
  Offline() : DeviceRig(operating_mode::kPortLibrary) {
    parameters.port_code = port_code::kOffline;
    parameters.timeout_ms = 0;
    io.Open();
    state.connected = true;
  }

  // Reads one byte after the other up to the first failure.
  std::string ReadToEnd() {
    std::string bytes;
    for (io.ReadBinary("", 1, buffer); io.LastError().code >= 0; io.ReadBinary("", 1, buffer))
      bytes += static_cast<char>(buffer.front());
    return bytes;
  }
};

TEST_F(Offline, OpensWithoutTheLibrary) {
  EXPECT_EQ(state.test_mode, -1);
  EXPECT_EQ(state.last_result, 0);
  EXPECT_EQ(io.LastError().code, 0);
  EXPECT_EQ(parameters.timeout_ms, 0);
  EXPECT_EQ(source.uses, 0);
}

TEST_F(Offline, NothingReachesTheLibrary) {
  io.Write("A", "\n", 0);
  io.SetTimeout(50);
  io.ReadText("\n", 16000, answer, buffer);
  io.ReadBinary("", 3, buffer);
  io.ActivateInterpreter();
  io.Close();
  EXPECT_EQ(io.FlushInput(), std::nullopt);
  EXPECT_EQ(source.uses, 0);
  EXPECT_EQ(io.LastError().code, 0);
}

TEST_F(Offline, NothingIsPreparedForAWait) {
  listener.unattended = 0;
  io.Write("A", "\n", 0);
  io.ReadText("\n", 16000, answer, buffer);
  io.ReadBinary("", 3, buffer);
  EXPECT_EQ(listener.unattended, 0);
  parameters.port_code = port_code::kTcpIp;
  io.Open();
  EXPECT_EQ(listener.unattended, 1) << "another connection after the test mode";
}

TEST_F(Offline, AnswersWithDateAndTime) {
  io.ReadText("\r\n", 16000, answer, buffer);
  EXPECT_EQ(answer, kAnswer);
  io.ReadText("", 16000, answer, buffer);
  EXPECT_EQ(answer, kAnswer);
}

TEST_F(Offline, BytewiseReadsEndWithTheAnswer) {
  EXPECT_EQ(ReadToEnd(), kAnswer);
  EXPECT_EQ(io.LastError().code, device_status::kTestAnswerEnd);
  io.ReadBinary("", 1, buffer);
  EXPECT_LT(io.LastError().code, 0);
}

TEST_F(Offline, EachExchangeStartsANewAnswer) {
  ReadToEnd();
  io.ClearLastError();
  EXPECT_EQ(io.LastError().code, 0);
  EXPECT_EQ(ReadToEnd(), kAnswer);
  io.Write("A", "\n", 0);
  EXPECT_EQ(io.LastError().code, 0);
  EXPECT_EQ(ReadToEnd(), kAnswer);
  io.ReadText("\n", 16000, answer, buffer);
  EXPECT_EQ(io.LastError().code, 0);
  io.ReadBinary("", 4, buffer);
  io.Open();
  EXPECT_EQ(ReadToEnd(), kAnswer);
}

TEST_F(Offline, CountedReadsArePaddedWithSpaces) {
  buffer = Bytes(52, 9);
  io.ReadBinary("", 50, buffer);
  EXPECT_EQ(std::string(buffer.begin(), buffer.end()), kAnswer + std::string(11, ' ') + "\t\t");
  EXPECT_EQ(io.LastError().code, 0);
  io.ClearLastError();
  io.ReadBinary("", 4, buffer);
  EXPECT_EQ(std::string(buffer.begin(), buffer.begin() + 5), "Test ");
}

TEST_F(Offline, TheFlagLastsUntilTheNextOpen) {
  io.Close();
  parameters.port_code = port_code::kCom1;
  io.Write("A", "\n", 0);
  EXPECT_EQ(source.uses, 0);
  io.Open();
  EXPECT_EQ(state.test_mode, 0);
  EXPECT_EQ(library.calls.front(), "OpenPort(1, 0, \"e\", 1, 1, 512)");
}

TEST(OfflineBeforeOpening, TheLibraryIsNotCalledEither) {
  DeviceRig rig(operating_mode::kPortLibrary);
  rig.parameters.port_code = port_code::kOffline;
  rig.io.SetTimeout(3000);
  rig.io.ReadText("\n", 16000, rig.answer, rig.buffer);
  EXPECT_EQ(rig.source.uses, 0);
  EXPECT_EQ(rig.answer, kAnswer);
}

}  // namespace
}  // namespace kolvane::device
