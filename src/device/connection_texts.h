#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "device/connection_parameters.h"

namespace kolvane::device {

// The lists of the connection dialog, in order. Parity has kParityWords.
inline constexpr std::array<const char*, 3> kBaudChoices = {"9600", "19200", "38400"};
inline constexpr std::array<const char*, 2> kDataBitsChoices = {"7", "8"};
inline constexpr std::array<const char*, 2> kStopBitsChoices = {"1", "2"};
inline constexpr std::array<const char*, 16> kAddressChoices = {
    "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15", "16"};
inline constexpr std::array<const char*, 3> kDtrChoices = {"Disabled", "Enabled", "Handshake"};
inline constexpr std::array<const char*, 4> kRtsChoices = {"Disabled", "Enabled", "Handshake", "Toggle"};
inline constexpr std::array<const char*, 8> kGpibTimeoutChoices = {"100 ms", "300 ms", "1 s",   "3 s",
                                                                   "10 s",   "30 s",   "100 s", "300 s"};
// Worded differently from kLptModeWords, which are used in descriptions.
inline constexpr std::array<const char*, 5> kLptModeChoices = {"Nibble Mode", "Bit 8 Mode", "Byte Mode",
                                                               "EPP Mode", "Orbanyx Interlink Modus"};
inline constexpr std::array<const char*, 5> kLptTimeoutChoices = {"3 s", "10 s", "30 s", "100 s", "300 s"};

/// The index of a rate in kBaudChoices.
std::optional<std::int32_t> BaudIndex(std::int32_t rate);

/// The highest valid bus address.
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

/// The parallel-port modes for descriptions, in the order of ConnectionParameters::lpt_mode.
inline constexpr std::array<const char*, 5> kLptModeWords = {"Nibble Mode", "Bit8 Mode", "Byte Mode",
                                                             "EPP Mode", "Interlink Mode"};

/// Empty for a parity or mode outside the list.
std::string ParityWord(std::int16_t parity);
std::string LptModeWord(std::int16_t mode);

/// The parity letter for the port library: "n", "e" or "o", empty for any other parity.
std::string ParityLetter(std::int16_t parity);

/// The port as an unsigned number, 0 to 65535; ports above 32767 are stored as the same 16 bits with a sign.
std::string IpPortText(std::int16_t ip_port);

/// One line that describes the connection. For COM2 it shows the index in the list of rates, for COM1 the
/// rate; RS485, offline and unknown kinds have no description.
std::string ConnectionDescription(const ConnectionParameters& parameters);

}  // namespace kolvane::device
