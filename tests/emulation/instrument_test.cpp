// Instruments of programs, C++ and Python, at nodes that behave as the kernel's.

#include "kolvane/Instrument.h"

#include <gtest/gtest.h>

#include "app/program.h"
#include "emulation/tmc_driver.h"

namespace kolvane::emulation {
namespace {

using Calls = std::vector<std::string>;

class EmulatedInstrumentTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(IsEmulated());
    system_.AddUsb("1-1", {"MY1", "Orbanyx", "Bridge 8"}, "usbmisc", "usbtmc0");
    system_.Attach("usbtmc0", driver_);
  }
  /// The calls of the driver without the time-outs, whose numbers depend on the clock.
  Calls Transfers() {
    Calls calls = driver_.calls();
    std::erase_if(calls, [](const std::string& call) { return call.starts_with("timeout"); });
    return calls;
  }

  TmcDriver driver_;
  EmulatedSystem system_;
};

TEST_F(EmulatedInstrumentTest, AnswersAProgram) {
  Instrument instrument("USB::MY1::INSTR");
  EXPECT_EQ(instrument.Query("*IDN?"), "*IDN");
  EXPECT_EQ(instrument.QueryValues("1.5,-2?"), (std::vector<double>{1.5, -2}));
  EXPECT_EQ(instrument.QueryBlock("#13abc?"), "abc");
  EXPECT_EQ(instrument.ReadStatusByte(), 0x10);
  EXPECT_EQ(Transfers(),
            (Calls{"auto-abort", "clear", "write *IDN?", "write 1.5,-2?", "write #13abc?", "status byte"}));
}

TEST_F(EmulatedInstrumentTest, ReportsFailures) {
  Instrument instrument("USB::MY1::INSTR");
  instrument.SetTimeoutMs(1);
  try {
    instrument.Read();
    ADD_FAILURE() << "no error was reported";
  } catch (const InstrumentError& error) {
    EXPECT_EQ(error.status(), InstrumentError::kReadTimeout);
  }
  driver_.Unplug();
  EXPECT_THROW(instrument.Write("X"), InstrumentError);
  EXPECT_THROW(Instrument("USB::OTHER::INSTR"), InstrumentError);
}

// A build with sanitizers has no Python module.
#ifdef KOLVANE_PYTHON_FOLDER

TEST_F(EmulatedInstrumentTest, AnswersAPythonScript) {
  constexpr char kScript[] = R"(
import kolvane, pyvisa
print([port.resource for port in kolvane.list_ports()])
with kolvane.Instrument("USB::MY1::INSTR") as instrument:
    print(instrument.query("*IDN?"), instrument.query_block("#13abc?"), instrument.read_status_byte())
visa = pyvisa.ResourceManager("@kolvane").open_resource("USB0::0x0957::0x17A6::MY1::INSTR", read_termination="\r\n")
print(visa.query("MSV?"), visa.read_stb())
visa.close()
)";
  const app::Outcome outcome = app::RunProgram(
      {"-c", kScript},
      {.environment = {{"PYTHONPATH", KOLVANE_PYTHON_FOLDER}, {"PYTHONDONTWRITEBYTECODE", "1"}},
       .program = KOLVANE_PYTHON});
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out, "['USB::MY1::INSTR']\n*IDN b'abc' 16\nMSV 16\n");
}

#endif

}  // namespace
}  // namespace kolvane::emulation
