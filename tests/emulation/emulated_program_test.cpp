// The program itself on a computer with emulated devices.

#include <gtest/gtest.h>

#include "app/program.h"
#include "emulation/printer_port_driver.h"
#include "emulation/tmc_driver.h"

namespace kolvane::emulation {
namespace {

using app::Outcome;
using app::RunProgram;

class EmulatedProgramTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(IsEmulated());
    system_.AddUsb("1-1", {"MY1", "Orbanyx", "Bridge 8"}, "usbmisc", "usbtmc0");
    system_.Attach("usbtmc0", instrument_);
    system_.AddUsb("1-2", {"A5", "FTDI", "UART"}, "tty", "ttyUSB0");
    system_.AddNode("ppdev", "parport0");
    system_.Attach("parport0", port_);
  }

  TmcDriver instrument_;
  PrinterPortDriver port_;
  EmulatedSystem system_;
};

TEST_F(EmulatedProgramTest, ListsThePorts) {
  const Outcome outcome = RunProgram({"ports"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out,
            "ASRL/dev/ttyUSB0::INSTR  /dev/ttyUSB0   FTDI UART\n"
            "USB::MY1::INSTR          /dev/usbtmc0   Orbanyx Bridge 8\n"
            "USB::A5::INSTR           /dev/ttyUSB0   FTDI UART\n"
            "LPT1                     /dev/parport0  parallel port\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(EmulatedProgramTest, ExchangesWithAUsbInstrument) {
  const Outcome outcome = RunProgram({"send", "--connect", "USB::MY1::INSTR", "*IDN?", "MSV?"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "*IDN\nMSV\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(EmulatedProgramTest, ExchangesOverTheParallelPort) {
  const Outcome outcome = RunProgram(
      {"send", "--connect", "LPT1", "--receive-terminator", "LF", "--receive-mode", "terminator", "MSV"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "MSV\n");
  EXPECT_EQ(outcome.err, "");
}

TEST_F(EmulatedProgramTest, ReportsWhyThereIsNoConnection) {
  EXPECT_EQ(RunProgram({"send", "--connect", "USB::OTHER::INSTR", "X"}).err,
            "kolvane: Fehler beim Verbindungsaufbau: -10 (-10): Gerät oder Gerätedatei nicht gefunden\n");
  EXPECT_EQ(RunProgram({"send", "--connect", "LPT2", "X"}).status, 3);
}

}  // namespace
}  // namespace kolvane::emulation
