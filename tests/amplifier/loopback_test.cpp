// Where the simulated amplifier can be reached from.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "amplifier/server.h"

namespace kolvane::amplifier {
namespace {

constexpr char kListening[] = "0A";

// The local addresses, in the kernel's hexadecimal form, of the sockets that listen on `port`.
std::vector<std::string> Listening(const char* table, std::uint16_t port) {
  std::vector<std::string> addresses;
  std::ifstream lines(table);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string number, local, remote, state;
    words >> number >> local >> remote >> state;
    const std::size_t colon = local.find(':');
    if (state != kListening || colon == std::string::npos) continue;
    if (std::stoul(local.substr(colon + 1), nullptr, 16) == port) addresses.push_back(local.substr(0, colon));
  }
  return addresses;
}

TEST(Loopback, TheAmplifierListensOnlyOnLoopbackAddresses) {
  const ServerThread amplifier;
  EXPECT_EQ(Listening("/proc/net/tcp", amplifier.Port()), std::vector<std::string>{"0100007F"});
  for (const std::string& address : Listening("/proc/net/tcp6", amplifier.Port()))
    EXPECT_EQ(address, "00000000000000000000000001000000");
}

}  // namespace
}  // namespace kolvane::amplifier
