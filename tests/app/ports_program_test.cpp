// `kolvane ports`, the real program with a record of devices that the test provides.

#include <fcntl.h>
#include <gtest/gtest.h>

#include "app/program.h"
#include "devlnk/fake_sysfs.h"

namespace kolvane::app {
namespace {

class PortsProgram : public testing::Test {
 protected:
  Outcome Ports(std::vector<std::string> more = {}, int output = -1, const std::string& library = "") {
    more.insert(more.begin(), "ports");
    return RunProgram(more, {.environment = {{"KOLVANE_SYSFS", system_.root()},
                                             {"KOLVANE_PORT_LIBRARY", library},
                                             {"KOLVANE_COM1", "/dev/ttyUSB0"},
                                             {"KOLVANE_COM2", "/nowhere"},
                                             {"KOLVANE_LPT1", "/nowhere"},
                                             {"KOLVANE_LPT2", "/dev/parport1"},
                                             {"KOLVANE_GPIB", "0"},
                                             {"KOLVANE_GPIB_LIBRARY", "/nowhere"}},
                             .output = output});
  }

  devlnk::FakeSysfs system_;
};

TEST_F(PortsProgram, ListsThePorts) {
  system_.AddDevice("1-1", {"idVendor=0403", "serial=A5", "manufacturer=FTDI", "product=UART"});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  system_.AddDevice("1-2", {"idVendor=0957", "serial=MY1",
                            "product=Pr\xC3\xBC"
                            "fer"});
  system_.AddNode("usbmisc", "usbtmc0", "1-2", "usbtmc0");
  system_.AddClassEntry("gpib_common", "gpib0");
  system_.AddClassEntry("ppdev", "parport1");
  const Outcome outcome = Ports();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "ASRL1::INSTR           /dev/ttyUSB0   FTDI UART\n"
            "USB::MY1::INSTR        /dev/usbtmc0   Pr\xC3\xBC"
            "fer\n"
            "USB::A5::INSTR         /dev/ttyUSB0   FTDI UART\n"
            "GPIB0::ADDRESS::INSTR  /dev/gpib0     GPIB board 0\n"
            "LPT2                   /dev/parport1  parallel port\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(PortsProgram, ListsTheUsbInstrumentsThatAnotherPortLibraryFinds) {
  system_.AddDevice("1-1", {"idVendor=0403", "serial=A5", "product=UART"});
  system_.AddNode("tty", "ttyUSB0", "1-1", "ttyUSB0");
  system_.AddClassEntry("ppdev", "parport1");
  const Outcome outcome = Ports({}, -1, KOLVANE_COMPLETE_LIBRARY);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "ASRL1::INSTR   /dev/ttyUSB0   UART\n"
            "USB::S::INSTR  -              -\n"
            "LPT2           /dev/parport1  parallel port\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(PortsProgram, ReportsWhyAnotherPortLibraryCannotBeUsed) {
  system_.AddClassEntry("ppdev", "parport1");
  const Outcome outcome = Ports({}, -1, "/nowhere/lib.so");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "LPT2  /dev/parport1  parallel port\n");
  EXPECT_EQ(outcome.err,
            "kolvane: Die Portbibliothek „/nowhere/lib.so“ kann nicht benutzt werden: Datei nicht "
            "gefunden.\n");
}

TEST_F(PortsProgram, ReportsThatThereAreNoPorts) {
  const Outcome outcome = Ports();
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "kolvane: no ports found\n");
}

TEST_F(PortsProgram, TakesNoArguments) {
  const Outcome outcome = Ports({"COM1"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "kolvane: ports takes no arguments (see kolvane --help)\n");
  EXPECT_EQ(Ports({"--help"}).out.substr(0, 6), "Usage:");
}

TEST_F(PortsProgram, FailsIfTheListCannotBeWritten) {
  system_.AddClassEntry("ppdev", "parport1");
  const int full = open("/dev/full", O_WRONLY);
  EXPECT_EQ(Ports({}, full).status, 1);
}

}  // namespace
}  // namespace kolvane::app
