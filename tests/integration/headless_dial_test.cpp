// Dialling without a window, with a modem on a pseudo terminal.

#include <gtest/gtest.h>

#include <cstdlib>

#include "device/device_state.h"
#include "headless/terminal.h"
#include "integration/modem.h"

namespace kolvane::integration {
namespace {

TEST(HeadlessDial, ARefusalIsOneLineWithTheModemsLastWord) {
  Modem modem(Answers{{"ATD", "\r\nNO CARRIER\r\n"}});
  setenv("KOLVANE_PORT_LIBRARY", KOLVANE_PORT_LIBRARY_FILE, 1);
  setenv("KOLVANE_COM1", modem.node().c_str(), 1);
  headless::RunState state;
  state.device.OperMode = device::operating_mode::kPortLibrary;
  state.connection.port_code = device::port_code::kCom1;
  state.connection.baud = 9600;
  state.connection.data_bits = 8;
  state.connection.timeout_ms = 400;
  state.connection.modem_script = "ATD";
  state.connection.dial_timeout_s = 1;
  CommandRunOptions options;
  options.Verbose = true;
  testing::internal::CaptureStderr();
  {
    headless::HostLines host(options.OnLine);
    headless::Terminal terminal({options, host, state, {}});
    EXPECT_FALSE(terminal.Connect());
  }
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_TRUE(err.ends_with(
      "\nkolvane: Fehler beim Verbindungsaufbau: -1 (-1), letzte Antwort des Modems: „NO CARRIER“\n"
      "kolvane: Versucht wurde die gespeicherte Verbindung: COM 1 (" +
      modem.node() + "). --connect nennt eine andere.\n"))
      << err;
  EXPECT_EQ(err.find("Verbindung hergestellt"), std::string::npos) << err;
}

}  // namespace
}  // namespace kolvane::integration
