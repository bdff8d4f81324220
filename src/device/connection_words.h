#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace kolvane::device {

/// The list of parities, in the order of ConnectionParameters::parity.
inline constexpr std::array<const char*, 3> kParityWords = {"Keine", "Gerade", "Ungerade"};

/// The parallel-port modes as descriptions name them, in the order of ConnectionParameters::lpt_mode.
inline constexpr std::array<const char*, 5> kLptModeWords = {"Nibble Mode", "Bit8 Mode", "Byte Mode",
                                                             "EPP Mode", "Interlink Mode"};

/// Empty for a parity or mode outside the list.
std::string ParityWord(std::int16_t parity);
std::string LptModeWord(std::int16_t mode);

/// What the port library receives: "n", "e" or "o", empty for any other parity.
std::string ParityLetter(std::int16_t parity);

/// The number as a person writes it, 0 to 65535; ports above 32767 are kept as the negative number of the
/// same 16 bits.
std::string IpPortText(std::int16_t ip_port);

}  // namespace kolvane::device
