#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "device/connection_parameters.h"

namespace kolvane::device {

// What the lists of the connection dialog offer, in order. Parity has kParityWords.
inline constexpr std::array<const char*, 3> kBaudChoices = {"9600", "19200", "38400"};
inline constexpr std::array<const char*, 2> kDataBitsChoices = {"7", "8"};
inline constexpr std::array<const char*, 2> kStopBitsChoices = {"1", "2"};
inline constexpr std::array<const char*, 16> kAddressChoices = {
    "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15", "16"};
inline constexpr std::array<const char*, 3> kDtrChoices = {"Disabled", "Enabled", "Handshake"};
inline constexpr std::array<const char*, 4> kRtsChoices = {"Disabled", "Enabled", "Handshake", "Toggle"};
inline constexpr std::array<const char*, 8> kGpibTimeoutChoices = {"100 ms", "300 ms", "1 s",   "3 s",
                                                                   "10 s",   "30 s",   "100 s", "300 s"};
// Worded differently from kLptModeWords, which describe a connection.
inline constexpr std::array<const char*, 5> kLptModeChoices = {"Nibble Mode", "Bit 8 Mode", "Byte Mode",
                                                               "EPP Mode", "Orbanyx Interlink Modus"};
inline constexpr std::array<const char*, 5> kLptTimeoutChoices = {"3 s", "10 s", "30 s", "100 s", "300 s"};

/// The place of a rate in kBaudChoices.
std::optional<std::int32_t> BaudIndex(std::int32_t rate);

/// The highest bus address that is accepted, typed or not.
inline constexpr std::int16_t kLastAddress = 31;

/// One of the check boxes of the page "RS232 erweitert".
struct ExtendedCheck {
  int index;  ///< in the array ExtPar, which has gaps
  const char* caption;
  std::int32_t ExtendedRs232::*field;
};

inline constexpr std::array<ExtendedCheck, 7> kExtendedChecks = {{
    {0, "CTS Output Flow Control", &ExtendedRs232::cts_output_flow},
    {1, "DSR Output Flow Control", &ExtendedRs232::dsr_output_flow},
    {4, "DSR Sensitivity", &ExtendedRs232::dsr_sensitivity},
    {5, "Abort on error", &ExtendedRs232::abort_on_error},
    {6, "Transmission Xon/Xoff Control", &ExtendedRs232::transmission_xon_xoff},
    {7, "Reception Xon/Xoff Control", &ExtendedRs232::reception_xon_xoff},
    {8, "Continue Transmission after Xoff", &ExtendedRs232::continue_after_xoff},
}};

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

/// One line about the connection that `parameters` describe. COM2 is described by its index in the list of
/// rates where COM1 shows the rate; RS485, offline and unknown kinds have no description.
std::string ConnectionDescription(const ConnectionParameters& parameters);

}  // namespace kolvane::device
