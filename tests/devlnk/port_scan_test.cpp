#include "devlnk/port_scan.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

#include "base/loopback.h"
#include "devlnk/fake_sysfs.h"

namespace kolvane::devlnk {
namespace {

namespace fs = std::filesystem;

class PortScan : public testing::Test {
 protected:
  // No name refers to a port that this computer may have.
  PortScan() {
    for (const char* name : {"KOLVANE_COM1", "KOLVANE_COM2", "KOLVANE_LPT1", "KOLVANE_LPT2"})
      setenv(name, "/nowhere", 1);
    setenv("KOLVANE_GPIB", "0", 1);
    setenv("KOLVANE_GPIB_LIBRARY", "/nowhere", 1);
  }

  /// One port per line: kind, name, node, board, serial number, description.
  std::string Scan() {
    Deadline deadline(20'000);
    std::string text;
    for (const FoundPort& port : ScanPorts(system_.root(), deadline)) text += Line(port);
    return text;
  }

  static std::string Line(const FoundPort& port) {
    constexpr const char* kKinds[] = {"serial", "usb", "gpib", "parallel"};
    return std::string(kKinds[static_cast<int>(port.kind)]) + " '" + port.name + "' '" + port.node + "' " +
           std::to_string(port.board) + " '" + port.serial + "' '" + port.description + "'\n";
  }

  void AddLine(const std::string& name, const std::string& type) {
    system_.AddDevice("platform", {});
    system_.AddNode("tty", name, "platform", name);
    std::ofstream(fs::path(system_.root()) / "class/tty" / name / "type") << type << "\n";
  }

  FakeSysfs system_;
};

TEST_F(PortScan, ListsEachKindInItsOrder) {
  AddLine("ttyS0", "4");
  system_.AddDevice("1-1", {"idVendor=0403", "serial=A5", "manufacturer=FTDI", "product=UART"});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  system_.AddDevice("1-2", {"idVendor=0957", "serial=MY1", "product=Bridge"});
  system_.AddNode("usbmisc", "usbtmc0", "1-2", "usbtmc0");
  system_.AddClassEntry("gpib_common", "gpib0");
  system_.AddClassEntry("ppdev", "parport0");
  EXPECT_EQ(Scan(),
            "serial '' '/dev/ttyS0' 0 '' 'serial port'\n"
            "serial '' '/dev/ttyUSB0' 0 '' 'FTDI UART'\n"
            "usb '' '/dev/usbtmc0' 0 'MY1' 'Bridge'\n"
            "usb '' '/dev/ttyUSB0' 0 'A5' 'FTDI UART'\n"
            "gpib 'GPIB' '/dev/gpib0' 0 '' 'GPIB board'\n"
            "parallel '' '/dev/parport0' 0 '' 'parallel port'\n");
}

TEST_F(PortScan, IsEmptyWithoutPorts) {
  EXPECT_EQ(Scan(), "");
  Deadline deadline(20'000);
  EXPECT_TRUE(ScanPorts("/nowhere", deadline).empty());
}

TEST_F(PortScan, LeavesOutLinesWithoutAChipAndConsoles) {
  AddLine("ttyS0", "4");
  AddLine("ttyS1", "0");
  system_.AddClassEntry("tty", "tty0");
  system_.AddClassEntry("tty", "ptmx");
  EXPECT_EQ(Scan(), "serial '' '/dev/ttyS0' 0 '' 'serial port'\n");
}

TEST_F(PortScan, ReportsTheNodesOfTheNames) {
  AddLine("ttyS0", "4");
  AddLine("ttyAMA0", "32");
  system_.AddClassEntry("ppdev", "parport1");
  setenv("KOLVANE_COM1", "/dev/ttyAMA0", 1);
  setenv("KOLVANE_COM2", "/dev/ttyS0", 1);
  setenv("KOLVANE_LPT2", "/dev/parport1", 1);
  EXPECT_EQ(Scan(),
            "serial 'COM2' '/dev/ttyS0' 0 '' 'serial port'\n"
            "serial 'COM1' '/dev/ttyAMA0' 0 '' 'serial port'\n"
            "parallel 'LPT2' '/dev/parport1' 0 '' 'parallel port'\n");
}

TEST_F(PortScan, AddsANamedLineThatTheRecordLacks) {
  const base::Pty pty;
  const std::string& node = pty.node();
  const fs::path link = fs::path(system_.root()) / "line";
  fs::create_symlink(node, link);
  setenv("KOLVANE_COM2", link.c_str(), 1);
  EXPECT_EQ(Scan(), "serial 'COM2' '" + link.string() + "' 0 '' 'serial port'\n");
  system_.AddDevice("platform", {});
  system_.AddNode("tty", "ttyS0", "platform", node);
  EXPECT_EQ(Scan(), "serial 'COM2' '" + node + "' 0 '' 'serial port'\n");
}

TEST_F(PortScan, AddsNoNamedNodeThatIsNotADevice) {
  const fs::path file = fs::path(system_.root()) / "file";
  std::ofstream(file) << "text";
  setenv("KOLVANE_COM1", file.c_str(), 1);
  setenv("KOLVANE_LPT1", system_.root().c_str(), 1);
  EXPECT_EQ(Scan(), "");
}

TEST_F(PortScan, ListsEveryGpibBoard) {
  for (const char* name : {"gpib0", "gpib3", "gpibx"}) system_.AddClassEntry("gpib_common", name);
  setenv("KOLVANE_GPIB", "3", 1);
  EXPECT_EQ(Scan(),
            "gpib '' '/dev/gpib0' 0 '' 'GPIB board'\n"
            "gpib 'GPIB' '/dev/gpib3' 3 '' 'GPIB board'\n");
}

TEST_F(PortScan, TakesTheDriversWholeTableForTheConfiguredBoardOnly) {
  for (int board = 0; board < 16; ++board)
    system_.AddClassEntry("gpib_common", "gpib" + std::to_string(board));
  setenv("KOLVANE_GPIB", "11", 1);
  EXPECT_EQ(Scan(), "gpib 'GPIB' '/dev/gpib11' 11 '' 'GPIB board'\n");
}

TEST_F(PortScan, ListsADriverWithoutARecord) {
  setenv("KOLVANE_GPIB_LIBRARY", GPIB_STAND_IN, 1);
  setenv("KOLVANE_GPIB", "2", 1);
  EXPECT_EQ(Scan(), "gpib 'GPIB' '' 2 '' 'GPIB driver'\n");
  setenv("KOLVANE_GPIB", "two", 1);
  EXPECT_EQ(Scan(), "");
}

TEST_F(PortScan, ListsNothingOnceTimeIsOver) {
  AddLine("ttyS0", "4");
  Deadline over(0);
  for (const FoundPort& port : ScanPorts(system_.root(), over)) ADD_FAILURE() << Line(port);
}

}  // namespace
}  // namespace kolvane::devlnk
