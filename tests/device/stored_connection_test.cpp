#include "device/stored_connection.h"

#include <gtest/gtest.h>

namespace kolvane::device {
namespace {

ConnectionParameters Applied(std::int16_t option) {
  ConnectionParameters parameters;
  parameters.port_option = option;
  parameters.baud_index = 1;
  parameters.lpt_mode = 4;
  parameters.timeout_entries = {
      .rs232_seconds = 2, .tcpip_seconds = 3, .usb_seconds = 9, .gpib_index = 0, .lpt_index = 1};
  ApplyStoredConnection(parameters);
  return parameters;
}

TEST(StoredConnection, GivesEachOptionItsCode) {
  const std::int16_t codes[] = {1, 2, 10, 20, 90, 91, 488, -1, 100, 200};
  for (std::int16_t option = 0; option < 10; ++option) EXPECT_EQ(Applied(option).port_code, codes[option]);
}

TEST(StoredConnection, TakesTheTimeoutOfTheKindsPage) {
  EXPECT_EQ(Applied(0).timeout_ms, 2000);
  EXPECT_EQ(Applied(4).timeout_ms, 10000);
  EXPECT_EQ(Applied(6).timeout_ms, 100000);
  EXPECT_EQ(Applied(8).timeout_ms, 3000);
  EXPECT_EQ(Applied(9).timeout_ms, 2000);
}

TEST(StoredConnection, TurnsListIndexesIntoValues) {
  EXPECT_EQ(Applied(0).baud, 19200);
  EXPECT_EQ(Applied(5).baud, 95);
  ConnectionParameters parameters;
  parameters.port_option = 0;
  parameters.baud_index = 99;
  ApplyStoredConnection(parameters);
  EXPECT_EQ(parameters.baud, 38400);
}

TEST(StoredConnection, FillsWhatTheSettingsDoNotDecide) {
  const ConnectionParameters parameters = Applied(1);
  EXPECT_EQ(parameters.data_bits, 8);
  EXPECT_EQ(parameters.stop_bits, 1);
  EXPECT_EQ(parameters.receive_buffer, 4096);
}

TEST(StoredConnection, LeavesTheRecordAloneForAnOptionThatIsNone) {
  EXPECT_EQ(Applied(10).port_code, port_code::kLpt1);
  EXPECT_EQ(Applied(10).timeout_ms, 0);
}

}  // namespace
}  // namespace kolvane::device
