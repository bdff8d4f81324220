#include "devlnk/port_scan.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "devlnk/fake_sysfs.h"

namespace kolvane::devlnk {
namespace {

class UsbScan : public testing::Test {
 protected:
  /// One device per line: driver, node, serial number, description.
  std::string Scan() {
    Deadline deadline(20'000);
    std::string text;
    for (const UsbDevice& device : ScanUsb(system_.root(), deadline))
      text += (device.driver == UsbDriver::kTmc ? "tmc " : "line ") + device.node + " '" + device.serial +
              "' '" + device.description + "'\n";
    return text;
  }

  FakeSysfs system_;
};

TEST_F(UsbScan, FindsInstrumentsBeforeAdapters) {
  system_.AddDevice("1-1", {"idVendor=0403", "serial=A50285BI", "manufacturer=FTDI", "product=FT232R UART"});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  system_.AddDevice("1-2", {"idVendor=0957", "serial=MY1234", "manufacturer=Orbanyx", "product=Bridge 8"});
  system_.AddNode("usbmisc", "usbtmc0", "1-2", "usbtmc0");
  system_.AddDevice("1-3", {"idVendor=2341", "serial=75", "product=Board"});
  system_.AddNode("tty", "ttyACM0", "1-3", "ttyACM0");
  EXPECT_EQ(Scan(),
            "tmc /dev/usbtmc0 'MY1234' 'Orbanyx Bridge 8'\n"
            "line /dev/ttyUSB0 'A50285BI' 'FTDI FT232R UART'\n"
            "line /dev/ttyACM0 '75' 'Board'\n");
}

TEST_F(UsbScan, IsEmptyWithoutDevices) {
  EXPECT_EQ(Scan(), "");
  Deadline deadline(20'000);
  EXPECT_TRUE(ScanUsb("/nowhere", deadline).empty());
}

TEST_F(UsbScan, LeavesOutOtherDevicesAndThoseWithoutASerialNumber) {
  system_.AddDevice("1-1", {"idVendor=0403", "product=Nameless"});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  system_.AddDevice("1-2", {"idVendor=0403", "serial= \t"});
  system_.AddNode("tty", "ttyUSB1", "1-2", "ttyUSB1");
  system_.AddDevice("platform", {"serial=1"});
  system_.AddNode("tty", "ttyUSB2", "platform", "ttyUSB2");
  system_.AddDevice("1-4", {"idVendor=0403", "serial=4"});
  system_.AddNode("tty", "ttyS0", "1-4", "ttyS0");
  EXPECT_EQ(Scan(), "");
}

TEST_F(UsbScan, NamesEachSerialNumberOnce) {
  system_.AddDevice("1-1", {"idVendor=1", "serial=same", "product=Both"});
  system_.AddNode("tty", "ttyACM0", "1-1", "ttyACM0");
  system_.AddNode("usbmisc", "usbtmc3", "1-1", "usbtmc3");
  EXPECT_EQ(Scan(), "tmc /dev/usbtmc3 'same' 'Both'\n");
}

TEST_F(UsbScan, CountsNodesByNumber) {
  for (const char* number : {"10", "2"}) {
    system_.AddDevice("1-" + std::string(number), {"idVendor=1", "serial=S" + std::string(number)});
    system_.AddNode("tty", "ttyUSB" + std::string(number), "1-" + std::string(number), "");
  }
  EXPECT_EQ(Scan(), "line /dev/ttyUSB2 'S2' ''\nline /dev/ttyUSB10 'S10' ''\n");
}

TEST_F(UsbScan, TakesTheNodeFromTheRecordAndTheMakerOnce) {
  system_.AddDevice("1-1", {"idVendor=1", "serial=A", "manufacturer=Orbanyx", "product=Orbanyx 8"});
  system_.AddNode("tty", "ttyUSB0", "1-1", "/dev/pts/7");
  system_.AddDevice("1-2", {"idVendor=1", "serial=B", "manufacturer=Orbanyx"});
  system_.AddNode("tty", "ttyUSB1", "1-2", "pts/8");
  EXPECT_EQ(Scan(), "line /dev/pts/7 'A' 'Orbanyx 8'\nline /dev/pts/8 'B' 'Orbanyx'\n");
}

TEST_F(UsbScan, SurvivesDamage) {
  system_.AddDevice("1-1", {"idVendor=1",
                            "serial= A\x01"
                            "B ",
                            "product=" + std::string(10'000, 'x')});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  system_.AddDevice("1-2", {"idVendor=1"});
  system_.AddNode("tty", "ttyUSB1", "1-2", "ttyUSB1");
  ASSERT_EQ(mkfifo((system_.DeviceFolder("1-2") / "serial").c_str(), 0600), 0);
  std::filesystem::create_directory_symlink("/nowhere", system_.root() + "/class/tty/ttyUSB2");
  EXPECT_EQ(Scan(), "line /dev/ttyUSB0 'A B' '" + std::string(4096, 'x') + "'\n");
}

TEST_F(UsbScan, EndsWhenTimeIsOver) {
  system_.AddDevice("1-1", {"idVendor=1", "serial=A"});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  Deadline deadline(0);
  EXPECT_TRUE(ScanUsb(system_.root(), deadline).empty());
}

}  // namespace
}  // namespace kolvane::devlnk
