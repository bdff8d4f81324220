#include "device/connection_words.h"

namespace kolvane::device {
namespace {

constexpr std::array<const char*, 3> kParityLetters = {"n", "e", "o"};

template <std::size_t kSize>
std::string WordAt(const std::array<const char*, kSize>& words, std::int16_t index) {
  const auto at = static_cast<std::size_t>(index);
  return index >= 0 && at < kSize ? words[at] : "";
}

}  // namespace

std::string ParityWord(std::int16_t parity) { return WordAt(kParityWords, parity); }

std::string LptModeWord(std::int16_t mode) { return WordAt(kLptModeWords, mode); }

std::string ParityLetter(std::int16_t parity) { return WordAt(kParityLetters, parity); }

std::string IpPortText(std::int16_t ip_port) { return std::to_string(static_cast<std::uint16_t>(ip_port)); }

}  // namespace kolvane::device
