#include "device/attached_ports.h"

#include <gtest/gtest.h>

#include "fake_port_library.h"

namespace kolvane::device {
namespace {

std::string Padded(std::string text) {
  text.resize(255, ' ');
  return text;
}

using Found = std::vector<std::string>;

class UsbScanTest : public testing::Test {
 protected:
  Found Scan(std::int32_t slots) {
    library_.results["MaxUsbDevices"] = {slots};
    return ScanUsb(library_, state_);
  }

  DeviceState state_;
  FakePortLibrary library_;
};

TEST_F(UsbScanTest, ListsSerialNumberAndDescriptionTrimmed) {
  library_.scan = Padded(" A1 ") + Padded("Verst\xE4rker") + Padded("B2") + Padded("");
  library_.results["ScanUsbDevices"] = {2};
  EXPECT_EQ(Scan(2), (Found{"A1 - Verstärker", "B2 - "}));
  EXPECT_EQ(state_.open_step_status, 2);
  EXPECT_EQ(library_.calls, (Found{"MaxUsbDevices()", "ScanUsbDevices(2)"}));
}

TEST_F(UsbScanTest, ReturnsSerialNumberAndDescriptionSeparately) {
  library_.scan = Padded("A - 1") + Padded("x");
  library_.results["MaxUsbDevices"] = {1};
  EXPECT_EQ(FindUsb(library_, state_), (std::vector<UsbInstrument>{{"A - 1", "x"}}));
}

TEST_F(UsbScanTest, LeavesOutSlotsWithoutASerialNumber) {
  library_.scan = Padded("") + Padded("nothing") + Padded("B2") + Padded("x");
  EXPECT_EQ(Scan(3), Found{"B2 - x"});
}

TEST_F(UsbScanTest, FindsNothingInABufferOfSpaces) {
  EXPECT_EQ(Scan(4), Found{});
  EXPECT_EQ(Scan(0), Found{});
}

TEST_F(UsbScanTest, PassesABufferOf510CharactersPerSlotAndTenMore) {
  library_.scan = std::string(2 * 510 + 10, 'x');
  EXPECT_EQ(Scan(2), (Found{std::string(255, 'x') + " - " + std::string(255, 'x'),
                            std::string(255, 'x') + " - " + std::string(255, 'x')}));
}

TEST_F(UsbScanTest, TakesFieldsThatEndWithNul) {
  library_.scan = Padded(std::string("A1\0junk", 7)) + Padded(std::string("D\0", 2));
  EXPECT_EQ(Scan(1), Found{"A1 - D"});
}

TEST_F(UsbScanTest, KeepsAFailure) {
  EXPECT_EQ(Scan(-7), Found{});
  EXPECT_EQ(state_.open_step_status, -7);
  EXPECT_EQ(library_.calls, Found{"MaxUsbDevices()"});
  library_.results["ScanUsbDevices"] = {-9};
  Scan(1);
  EXPECT_EQ(state_.open_step_status, -9);
}

TEST_F(UsbScanTest, IgnoresSlotsBeyondThePossibleNumber) {
  Scan(2000000000);
  EXPECT_EQ(library_.calls.back(), "ScanUsbDevices(4096)");
}

}  // namespace
}  // namespace kolvane::device
