#include "device/open_sequence.h"

#include <gtest/gtest.h>

#include <vector>

#include "device_rig.h"

namespace kolvane::device {
namespace {

class Opening : public testing::Test, public DeviceRig {
 protected:
  Opening() : DeviceRig(operating_mode::kPortLibrary) {
    parameters.baud = 19200;
    parameters.parity = 2;
    parameters.data_bits = 8;
    parameters.stop_bits = 2;
    parameters.receive_buffer = 4096;
    parameters.address = 12;
    parameters.timeout_ms = 3000;
    parameters.ip_address = "10.0.0.5";
    parameters.ip_port = 7;
    parameters.usb_address = "SN-Ö";
    parameters.gpib = {1, 2, 3, 10, 4};
  }

  std::int32_t Open(std::int16_t code) {
    parameters.port_code = code;
    return OpenSequence(state, parameters, source, clock, waits).Run();
  }

  Calls& calls = library.calls;
};

TEST_F(Opening, SerialPorts) {
  for (const std::int16_t code : std::vector<std::int16_t>{1, 2, 10, 20}) {
    calls.clear();
    EXPECT_EQ(Open(code), 0);
    const std::string port = std::to_string(code);
    EXPECT_EQ(calls, (Calls{"OpenPort(" + port + ", 19200, \"o\", 8, 2, 4096)", "SetTimeout(3000)",
                            "SelectDevice(12)", "ActivateInterpreter(200)"}));
  }
}

TEST_F(Opening, ParallelPorts) {
  parameters.baud = 95;
  for (const std::int16_t code : std::vector<std::int16_t>{90, 91}) {
    calls.clear();
    EXPECT_EQ(Open(code), 0);
    const std::string port = std::to_string(code);
    EXPECT_EQ(calls, (Calls{"EnablePortIo(" + port + ")", "OpenPort(" + port + ", 95, \"o\", 8, 2, 4096)",
                            "SetTimeout(3000)", "SelectDevice(12)", "ActivateInterpreter(200)"}));
  }
}

TEST_F(Opening, Gpib) {
  EXPECT_EQ(Open(488), 0);
  EXPECT_EQ(calls,
            (Calls{"SetGpibControlBlock(1, 3, 2, 10, 0, 4, 3000)", "OpenPort(488, 19200, \"o\", 8, 2, 4096)",
                   "SelectDevice(12)", "ActivateInterpreter(200)"}));
}

TEST_F(Opening, TcpIp) {
  EXPECT_EQ(Open(100), 0);
  EXPECT_EQ(calls, (Calls{"SetTimeout(3000)", "OpenPort(100, 1, \"10.0.0.5\", 7, 2, 4096)",
                          "SetTimeout(3000)", "SelectDevice(1)", "ActivateInterpreter(200)"}));
  EXPECT_EQ(parameters.address, 1);
  EXPECT_EQ(parameters.baud, 19200);
}

TEST_F(Opening, TcpIpCarriesHighPortsWithTheirSign) {
  parameters.ip_port = -1;
  EXPECT_EQ(Open(100), 0);
  EXPECT_EQ(calls[1], "OpenPort(100, 1, \"10.0.0.5\", -1, 2, 4096)");
}

TEST_F(Opening, Usb) {
  EXPECT_EQ(Open(200), 0);
  EXPECT_EQ(calls, (Calls{"SetTimeout(3000)", "OpenPort(200, 1, \"SN-\xD6\", 8, 2, 4096)", "SetTimeout(3000)",
                          "SelectDevice(1)", "ActivateInterpreter(200)"}));
  EXPECT_EQ(parameters.address, 1);
}

TEST_F(Opening, AChosenNodeIsGivenAtEachOpening) {
  parameters.node = "/dev/ttyUSB7";
  for (int round = 0; round < 2; ++round) {
    calls.clear();
    EXPECT_EQ(Open(10), 0);
    EXPECT_EQ(calls, (Calls{"SetNode(10, \"/dev/ttyUSB7\")", "OpenPort(10, 19200, \"o\", 8, 2, 4096)",
                            "SetTimeout(3000)", "SelectDevice(12)", "ActivateInterpreter(200)"}));
  }
}

TEST_F(Opening, ANodeThatTheLibraryRefusesIsTheResult) {
  parameters.node = "/dev/ttyUSB7";
  library.results["SetNode"] = {-2};
  EXPECT_EQ(Open(1), -2);
  EXPECT_EQ(calls, Calls{"SetNode(1, \"/dev/ttyUSB7\")"});
}

TEST_F(Opening, ALibraryThatTakesNoNodeIsNotCalledAndIsAnError) {
  parameters.node = "/dev/ttyUSB7";
  parameters.port_code = port_code::kCom1;
  library.takes_node = false;
  io.Open();
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(io.LastError().code, -904);
  EXPECT_EQ(io.LastError().description,
            "Die Portbibliothek kann die Gerätedatei „/dev/ttyUSB7“ nicht öffnen: Funktion QDX_SetNode "
            "fehlt.");
  parameters.node.clear();
  io.Open();
  EXPECT_EQ(io.LastError().code, 0);
}

TEST_F(Opening, OfflineCallsNothing) {
  EXPECT_EQ(Open(-1), 0);
  EXPECT_TRUE(calls.empty());
  EXPECT_EQ(state.test_mode, -1);
  EXPECT_EQ(Open(1), 0);
  EXPECT_EQ(state.test_mode, 0);
}

TEST_F(Opening, AnUnknownParityLeavesTheTextEmpty) {
  parameters.parity = 3;
  EXPECT_EQ(Open(10), 0);
  EXPECT_EQ(calls.front(), "OpenPort(10, 19200, \"\", 8, 2, 4096)");
}

TEST_F(Opening, ATimeoutOfZeroBecomesAndStays5000) {
  parameters.timeout_ms = 0;
  EXPECT_EQ(Open(10), 0);
  EXPECT_EQ(calls[1], "SetTimeout(5000)");
  EXPECT_EQ(parameters.timeout_ms, 5000);
}

TEST_F(Opening, TheGpibControlBlockHasTheTimeoutFromBefore) {
  parameters.timeout_ms = 0;
  EXPECT_EQ(Open(488), 0);
  EXPECT_EQ(calls.front(), "SetGpibControlBlock(1, 3, 2, 10, 0, 4, 0)");
  EXPECT_EQ(parameters.timeout_ms, 5000);
}

TEST_F(Opening, TheReceiveBufferIsCutTo16Bits) {
  const struct {
    std::int32_t size;
    const char* cut;
  } cases[] = {{32767, "32767"}, {32768, "-32768"}, {65535, "-1"}, {65536, "0"}, {70000, "4464"}};
  for (const auto& [size, cut] : cases) {
    calls.clear();
    parameters.receive_buffer = size;
    EXPECT_EQ(Open(10), 0);
    EXPECT_EQ(calls.front(), std::string("OpenPort(10, 19200, \"o\", 8, 2, ") + cut + ")");
  }
}

TEST_F(Opening, AFailedOpenPortIsTheResult) {
  library.results["OpenPort"] = {-21};
  EXPECT_EQ(Open(1), -21);
  EXPECT_EQ(calls.size(), 1u);
}

TEST_F(Opening, AFailedSelectDeviceIsTheResult) {
  library.results["SelectDevice"] = {-22};
  EXPECT_EQ(Open(100), -22);
  EXPECT_EQ(calls.back(), "SelectDevice(1)");
}

TEST_F(Opening, OnlyAFailureIsAResult) {
  library.results["OpenPort"] = {4};
  library.results["SelectDevice"] = {5};
  library.results["ActivateInterpreter"] = {-6};
  EXPECT_EQ(Open(1), 0);
}

TEST_F(Opening, KeepsTheOpenStepStatus) {
  library.results["SetGpibControlBlock"] = {-31};
  EXPECT_EQ(Open(488), 0);
  EXPECT_EQ(state.open_step_status, -31);

  library.results["EnablePortIo"] = {-32};
  library.results["OpenPort"] = {-1};
  EXPECT_EQ(Open(90), -1);
  EXPECT_EQ(state.open_step_status, -32);

  library.results["SetTimeout"] = {-33};
  library.results["OpenPort"] = {-1};
  EXPECT_EQ(Open(100), -1);
  EXPECT_EQ(state.open_step_status, -33);

  library.results["SetTimeout"] = {0, -34};
  EXPECT_EQ(Open(200), 0);
  EXPECT_EQ(state.open_step_status, -34);
}

TEST_F(Opening, ASerialPortWithoutTimeoutIsClosedAgainAndReadsAsSuccess) {
  for (const std::int16_t code : std::vector<std::int16_t>{1, 2}) {
    library.results["SetTimeout"] = {-35};
    io.ClearLastError();
    EXPECT_EQ(Open(code), 0);
    EXPECT_EQ(calls.back(), "ClosePort()");
    EXPECT_EQ(state.open_step_status, -35);
    EXPECT_TRUE(WasClosedAgain(state, parameters));
    EXPECT_EQ(Open(code), 0);
    EXPECT_FALSE(WasClosedAgain(state, parameters));
  }
}

TEST_F(Opening, Rs485IgnoresAFailedTimeout) {
  library.results["SetTimeout"] = {-35};
  EXPECT_EQ(Open(10), 0);
  EXPECT_EQ(calls.back(), "ActivateInterpreter(200)");
  EXPECT_FALSE(WasClosedAgain(state, parameters));
}

TEST_F(Opening, DialsOnSerialPortsBeforeTheInterpreter) {
  parameters.modem_script = "ATDT42";
  library.replies = {{"CONNECT\r\n"}};
  EXPECT_EQ(Open(2), 0);
  EXPECT_EQ(calls, (Calls{"OpenPort(2, 19200, \"o\", 8, 2, 4096)", "SetTimeout(3000)", "SelectDevice(12)",
                          "FlushInQueue()", "WritePort(\"ATDT42\r\")", "ReadPort(255, 10)",
                          "ActivateInterpreter(200)"}));
  EXPECT_EQ(state.open_step_status, 0);
  EXPECT_EQ(state.modem_word, std::nullopt) << "kept only of a failure";
}

TEST_F(Opening, DialsOnNoOtherPort) {
  parameters.modem_script = "ATDT42";
  for (const std::int16_t code : std::vector<std::int16_t>{10, 20, 90, 91, 100, 200, 488})
    EXPECT_EQ(Open(code), 0);
  for (const std::string& call : calls) EXPECT_FALSE(call.starts_with("WritePort")) << call;
}

TEST_F(Opening, SuccessfulDiallingReplacesTheFailedTimeout) {
  parameters.modem_script = "ATDT42";
  library.results["SetTimeout"] = {-35};
  library.replies = {{"CONNECT"}};
  EXPECT_EQ(Open(1), 0);
  EXPECT_EQ(calls.back(), "ActivateInterpreter(200)");
}

TEST_F(Opening, FailedDiallingClosesThePortAndReadsAsSuccess) {
  parameters.port_code = port_code::kCom1;
  parameters.modem_script = "ATDT42";
  library.replies = {{"NO CARRIER"}};
  io.Open();
  EXPECT_EQ(io.LastError().code, 0);
  EXPECT_EQ(state.open_step_status, -1);
  EXPECT_EQ(state.modem_word, "NO CARRIER");
  EXPECT_EQ(calls.back(), "ClosePort()");
}

TEST_F(Opening, AScriptOfEmptyLinesIsIgnored) {
  parameters.modem_script = "\r\n\r\n";
  EXPECT_EQ(Open(1), 0);
  EXPECT_EQ(calls.size(), 4u);
}

}  // namespace
}  // namespace kolvane::device
