#pragma once

// The kernel's own declarations: only they carry every rate as a number. They exclude <termios.h>.
#include <asm/termbits.h>
#include <linux/serial.h>

#include <cstdint>
#include <optional>

#include "devlnk/channel.h"

namespace kolvane::devlnk {

enum class Parity { kNone, kEven, kOdd };

struct SerialParameters {
  std::uint32_t baud = 9600;
  Parity parity = Parity::kNone;
  bool seven_data_bits = false;
  bool two_stop_bits = false;
  FlowControl flow = FlowControl::kNone;
};

/// What the first read of an answer waits inside the call; the driver counts in tenths of a second.
inline constexpr std::int32_t kSerialSliceMs = 100;

/// From what QDX_OpenPort was given; nothing where the rate is below 1 or the parity text is none of "n",
/// "e", "o" and empty. Data bits other than 7 mean 8, stop bits other than 2 mean 1: callers hold other
/// numbers until the user has chosen some.
std::optional<SerialParameters> SerialParametersFrom(const PortRequest& request);

/// The line's settings: raw, reads that end after kSerialSliceMs. Of `before` only
/// the hang-up on close and the line discipline stay.
termios2 SettingsFor(const SerialParameters& parameters, const termios2& before);

/// The driver drives the bus with RTS while it sends and is deaf meanwhile, so that nobody hears himself.
/// Delays and all else stay as they are.
serial_rs485 Rs485SettingsFor(const serial_rs485& before);

/// Whether the rate that the driver reports is near enough to the rate asked for to be understood.
bool RateMatches(std::uint32_t wanted, std::uint32_t reported);

}  // namespace kolvane::devlnk
