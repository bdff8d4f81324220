#include "device/connection_texts.h"

#include <algorithm>

namespace kolvane::device {
namespace {

constexpr std::array<const char*, 3> kParityLetters = {"n", "e", "o"};

template <std::size_t kSize>
std::string WordAt(const std::array<const char*, kSize>& words, std::int16_t index) {
  const auto at = static_cast<std::size_t>(index);
  return index >= 0 && at < kSize ? words[at] : "";
}

}  // namespace

std::optional<std::int32_t> BaudIndex(std::int32_t rate) {
  const auto at = std::ranges::find(kBaudChoices, std::to_string(rate));
  if (at == kBaudChoices.end()) return std::nullopt;
  return static_cast<std::int32_t>(at - kBaudChoices.begin());
}

std::string ParityWord(std::int16_t parity) { return WordAt(kParityWords, parity); }

std::string LptModeWord(std::int16_t mode) { return WordAt(kLptModeWords, mode); }

std::string ParityLetter(std::int16_t parity) { return WordAt(kParityLetters, parity); }

std::string IpPortText(std::int16_t ip_port) { return std::to_string(static_cast<std::uint16_t>(ip_port)); }

namespace {

std::string SerialText(const std::string& name, std::int32_t speed, const ConnectionParameters& parameters) {
  return name + " " + std::to_string(speed) + " Baud, Parity: " + ParityWord(parameters.parity) +
         ", Data: " + std::to_string(parameters.data_bits) +
         ", Stop: " + std::to_string(parameters.stop_bits);
}

}  // namespace

std::string ConnectionDescription(const ConnectionParameters& parameters) {
  switch (parameters.port_code) {
    case port_code::kCom1:
      return SerialText("COM1", parameters.baud, parameters);
    case port_code::kCom2:
      return SerialText("COM2", parameters.baud_index, parameters);
    case port_code::kLpt1:
      return "LPT1: " + LptModeWord(parameters.lpt_mode);
    case port_code::kLpt2:
      return "LPT2: " + LptModeWord(parameters.lpt_mode);
    case port_code::kTcpIp:
      return "TCP/IP: " + parameters.ip_address + ", Port " + IpPortText(parameters.ip_port);
    case port_code::kUsb:
      return "USB:  " + parameters.usb_address;
    case port_code::kGpib:
      return "GPIB: Addresse " + std::to_string(parameters.address);
    default:
      return {};
  }
}

}  // namespace kolvane::device
