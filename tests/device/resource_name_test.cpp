#include "device/resource_name.h"

#include <gtest/gtest.h>

#include <random>

namespace kolvane::device {
namespace {

Resource Parsed(std::string_view name) {
  const auto result = ParseResourceName(name);
  const auto* problem = std::get_if<ResourceProblem>(&result);
  EXPECT_EQ(problem, nullptr) << problem->text;
  return problem == nullptr ? std::get<Resource>(result) : Resource{};
}

std::string Refusal(std::string_view name) {
  const auto result = ParseResourceName(name);
  const auto* problem = std::get_if<ResourceProblem>(&result);
  return problem == nullptr ? "accepted" : problem->text;
}

TEST(ResourceName, NamesATcpIpConnection) {
  const Resource resource = Parsed("TCPIP::192.168.1.7::5025::SOCKET");
  EXPECT_EQ(resource.port_code, port_code::kTcpIp);
  EXPECT_EQ(resource.host, "192.168.1.7");
  EXPECT_EQ(resource.ip_port, 5025);
  EXPECT_EQ(Parsed("TCPIP0::amp.lab.example::1::SOCKET").host, "amp.lab.example");
  EXPECT_EQ(Parsed("TCPIP::[fe80::1%eth0]::5025::SOCKET").host, "fe80::1%eth0");
  EXPECT_EQ(Parsed("TCPIP::[::1]::5025::SOCKET"), Parsed("tcpip::[::1]::5025::socket"));
}

TEST(ResourceName, TakesPortsFrom1To65535) {
  EXPECT_EQ(Parsed("TCPIP::a::1::SOCKET").ip_port, 1);
  EXPECT_EQ(Parsed("TCPIP::a::32767::SOCKET").ip_port, 32767);
  EXPECT_EQ(Parsed("TCPIP::a::32768::SOCKET").ip_port, -32768);
  EXPECT_EQ(Parsed("TCPIP::a::65535::SOCKET").ip_port, -1);
  for (const char* port : {"0", "65536", "-1", "+1", "", " 7", "7 ", "0x10", "99999999999999999999", "7.0"}) {
    EXPECT_EQ(Refusal("TCPIP::a::" + std::string(port) + "::SOCKET"),
              "bad RESOURCE 'TCPIP::a::" + std::string(port) +
                  "::SOCKET': the port must be a number from 1 to 65535");
  }
}

TEST(ResourceName, RefusesInvalidTcpIpNames) {
  for (const char* name : {"TCPIP", "TCPIP::", "TCPIP::a", "TCPIP::a::7", "TCPIP::a::7::INSTR",
                           "TCPIP::a::7::SOCKET::", "TCPIP::::1::7::SOCKET", "TCPIP::[::1::7::SOCKET"})
    EXPECT_NE(Refusal(name).find("write TCPIP::HOST::PORT::SOCKET"), std::string::npos) << name;
  for (const char* host : {"", "[]", "a b", "[a", "a]", "][", "[ab", "ab]"})
    EXPECT_NE(Refusal("TCPIP::" + std::string(host) + "::7::SOCKET"), "accepted") << host;
}

TEST(ResourceName, NamesASerialLine) {
  EXPECT_EQ(Parsed("ASRL1::INSTR"), (Resource{.port_code = port_code::kCom1}));
  EXPECT_EQ(Parsed("asrl2::instr"), (Resource{.port_code = port_code::kCom2}));
  EXPECT_EQ(Parsed("ASRL/dev/ttyUSB0::INSTR"),
            (Resource{.port_code = port_code::kCom1, .node = "/dev/ttyUSB0"}));
  EXPECT_EQ(Parsed("asrl/dev/serial/by-id/usb-X_Y:1.0::instr").node, "/dev/serial/by-id/usb-X_Y:1.0");
}

TEST(ResourceName, NamesAnRs485Bus) {
  EXPECT_EQ(Parsed("ASRL1::RS485::0"), (Resource{.port_code = port_code::kCom1Rs485}));
  EXPECT_EQ(Parsed("ASRL2::rs485::31"), (Resource{.port_code = port_code::kCom2Rs485, .address = 31}));
  EXPECT_EQ(Parsed("ASRL/dev/ttyS4::RS485::7"),
            (Resource{.port_code = port_code::kCom1Rs485, .address = 7, .node = "/dev/ttyS4"}));
  for (const char* end : {"", "::", "::32", "::-1", "::x", "::7::INSTR"})
    EXPECT_NE(Refusal("ASRL1::RS485" + std::string(end)).find("from 0 to 31"), std::string::npos) << end;
}

TEST(ResourceName, RefusesInvalidSerialNames) {
  for (const char* line : {"", "0", "3", "11", "dev/ttyS0", "ttyS0", "COM1"})
    EXPECT_NE(Refusal("ASRL" + std::string(line) + "::INSTR").find("a serial line is ASRL1, ASRL2"),
              std::string::npos)
        << line;
  for (const char* end : {"", "::", "::INST", "::INSTR::", "::SOCKET"})
    EXPECT_NE(Refusal("ASRL1" + std::string(end)).find("ends in ::INSTR or"), std::string::npos) << end;
}

TEST(ResourceName, NamesAUsbInstrument) {
  EXPECT_EQ(Parsed("USB::A-4711::INSTR"),
            (Resource{.port_code = port_code::kUsb, .serial_number = "A-4711"}));
  EXPECT_EQ(Parsed("usb0::0x0957::0X1aBf::my 5::instr").serial_number, "my 5");
  EXPECT_EQ(Parsed("USB0::0x0::0xFFFF::s::INSTR").serial_number, "s");
  for (const char* name :
       {"USB", "USB::INSTR", "USB::::INSTR", "USB::s", "USB0::0x1::s::INSTR", "USB0::0x10000::0x1::s::INSTR",
        "USB0::0x-1::0x1::s::INSTR", "USB0::0x::0x1::s::INSTR", "USB0::0957::0x1::s::INSTR",
        "USB0::0x1::0x2::::INSTR", "USB0::0x1::0x2::s::SOCKET", "USB1::s::INSTR"})
    EXPECT_NE(Refusal(name), "accepted") << name;
}

TEST(ResourceName, NamesAGpibDevice) {
  EXPECT_EQ(Parsed("GPIB0::0::INSTR"), (Resource{.port_code = port_code::kGpib}));
  EXPECT_EQ(Parsed("gpib::31::instr"), (Resource{.port_code = port_code::kGpib, .address = 31}));
  for (const char* name : {"GPIB0", "GPIB0::5", "GPIB0::32::INSTR", "GPIB0::-1::INSTR", "GPIB0::::INSTR",
                           "GPIB0::5::96::INSTR", "GPIB1::5::INSTR"})
    EXPECT_NE(Refusal(name), "accepted") << name;
}

TEST(ResourceName, NamesParallelPortsAndTheTestMode) {
  EXPECT_EQ(Parsed("LPT1"), (Resource{.port_code = port_code::kLpt1}));
  EXPECT_EQ(Parsed("lpt2"), (Resource{.port_code = port_code::kLpt2}));
  EXPECT_EQ(Parsed("Offline"), (Resource{.port_code = port_code::kOffline}));
  for (const char* name : {"LPT", "LPT3", "LPT1::INSTR", "OFFLINE::", " OFFLINE"})
    EXPECT_NE(Refusal(name), "accepted") << name;
}

TEST(ResourceName, RefusesInOnePrintableLine) {
  EXPECT_EQ(
      Refusal("192.168.1.7"),
      "bad RESOURCE '192.168.1.7': it is neither HOST:PORT nor /dev/NODE, and starts with none of TCPIP, "
      "ASRL, USB, GPIB, LPT1, LPT2 and OFFLINE");
  EXPECT_EQ(Refusal("ASRL/dev/x\n::INSTR"),
            "bad RESOURCE 'ASRL/dev/x?::INSTR': it contains a control character");
  EXPECT_EQ(Refusal(std::string("LPT1\0", 5)), "bad RESOURCE 'LPT1?': it contains a control character");
  EXPECT_EQ(Refusal(std::string(1025, 'x')),
            "bad RESOURCE '" + std::string(200, 'x') + "...': it is too long");
  EXPECT_EQ(Parsed("USB::" + std::string(1012, 's') + "::INSTR").serial_number.size(), 1012u);
}

TEST(ResourceName, SurvivesAnyMixOfItsParts) {
  const std::string parts[] = {"TCPIP", "ASRL", "USB0", "GPIB0", "::", ":",  "[",      "]",    "::INSTR",
                               "1",     "/",    "0x",   "\xFF",  "",   "31", "SOCKET", "LPT1", "::RS485::"};
  std::mt19937 random(20240229);
  for (int round = 0; round < 50'000; ++round) {
    std::string name;
    for (auto left = random() % 9; left > 0; --left) name += parts[random() % std::size(parts)];
    const auto result = ParseResourceName(name);
    if (const auto* resource = std::get_if<Resource>(&result)) {
      EXPECT_LE(resource->address, 31) << name;
      EXPECT_EQ(resource->host.empty(), resource->port_code != port_code::kTcpIp) << name;
    }
  }
}

TEST(ResourceName, BecomesConnectionParameters) {
  ConnectionParameters parameters;
  ApplyResource(Parsed("TCPIP::amp::40000::SOCKET"), parameters);
  EXPECT_EQ(parameters.port_code, port_code::kTcpIp);
  EXPECT_EQ(parameters.port_option, 8);
  EXPECT_EQ(parameters.ip_address, "amp");
  EXPECT_EQ(static_cast<std::uint16_t>(parameters.ip_port), 40000);
  EXPECT_EQ(parameters.timeout_ms, 5000);
  EXPECT_EQ(parameters.data_bits, 8);
  EXPECT_EQ(parameters.stop_bits, 1);
  EXPECT_EQ(parameters.receive_buffer, 4096);

  ApplyResource(Parsed("ASRL2::RS485::9"), parameters);
  EXPECT_EQ(parameters.port_code, port_code::kCom2Rs485);
  EXPECT_EQ(parameters.port_option, 3);
  EXPECT_EQ(parameters.address, 9);
  EXPECT_EQ(parameters.ip_address, "");
  EXPECT_EQ(parameters.baud, 9600);
  EXPECT_EQ(parameters.parity, 1);
  EXPECT_EQ(parameters.data_bits, 8);
  EXPECT_EQ(parameters.stop_bits, 1);

  ApplyResource(Parsed("USB::4711::INSTR"), parameters);
  EXPECT_EQ(parameters.port_code, port_code::kUsb);
  EXPECT_EQ(parameters.usb_address, "4711");
}

TEST(ResourceName, TakesShortNames) {
  EXPECT_EQ(Parsed("192.168.1.7:5025"), Parsed("TCPIP::192.168.1.7::5025::SOCKET"));
  EXPECT_EQ(Parsed("[::1]:7"), Parsed("TCPIP::[::1]::7::SOCKET"));
  EXPECT_EQ(Parsed("/dev/ttyUSB0"), Parsed("ASRL/dev/ttyUSB0::INSTR"));
  EXPECT_EQ(Refusal("host:0"), "bad RESOURCE 'host:0': the port must be a number from 1 to 65535");
  for (const char* name : {":7", "host:", "::1:7", "host"}) EXPECT_NE(Refusal(name), "accepted") << name;
}

}  // namespace
}  // namespace kolvane::device
