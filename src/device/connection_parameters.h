#pragma once

#include <cstdint>
#include <string>

namespace kolvane::device {

/// Port codes as used by the port library and in the host's device data.
namespace port_code {
inline constexpr std::int16_t kCom1 = 1;
inline constexpr std::int16_t kCom2 = 2;
inline constexpr std::int16_t kCom1Rs485 = 10;
inline constexpr std::int16_t kCom2Rs485 = 20;
inline constexpr std::int16_t kLpt1 = 90;
inline constexpr std::int16_t kLpt2 = 91;
inline constexpr std::int16_t kGpib = 488;
inline constexpr std::int16_t kOffline = -1;
inline constexpr std::int16_t kTcpIp = 100;
inline constexpr std::int16_t kUsb = 200;
}  // namespace port_code

/// GPIB page; check boxes are 0 or 1.
struct GpibOptions {
  std::int16_t send_eoi_on_write = 0;
  std::int16_t send_eoi_with_eos = 0;
  std::int16_t stop_read_on_eos = 0;
  std::int16_t eos_char = 0;  ///< character code
  std::int16_t repeat_addressing = 0;
};

/// Page "RS232 erweitert"; only kept for the page, never sent to a port. Check boxes are 0 or 1. Defaults are
/// common ones for serial ports: both lines on, no flow control, DC1 and DC3 as Xon and Xoff.
struct ExtendedRs232 {
  std::int32_t cts_output_flow = 0;
  std::int32_t dsr_output_flow = 0;
  std::int32_t dtr_control = 1;  ///< 0 disabled, 1 enabled, 2 handshake
  std::int32_t dsr_sensitivity = 0;
  std::int32_t rts_control = 1;  ///< 0 disabled, 1 enabled, 2 handshake, 3 toggle
  std::int32_t transmission_xon_xoff = 0;
  std::int32_t reception_xon_xoff = 0;
  std::int32_t abort_on_error = 0;
  std::uint8_t xon_char = 17;
  std::uint8_t xoff_char = 19;
  std::int16_t xon_limit = 2048;  ///< bytes
  std::int16_t xoff_limit = 512;  ///< bytes
  std::int32_t continue_after_xoff = 0;
};

/// Time-out fields as stored in the settings: seconds as typed, or the index in the page's list.
struct TimeoutEntries {
  std::int32_t rs232_seconds = 5;
  std::int32_t tcpip_seconds = 5;
  std::int32_t usb_seconds = 5;
  std::int32_t gpib_index = 4;
  std::int32_t lpt_index = 0;
};

/// The texts of the time-out fields at the last OK of the connection dialog; empty before the first.
struct TimeoutTexts {
  std::string rs232;
  std::string tcpip;
  std::string usb;
  std::string gpib;
  std::string lpt;
};

/// Everything needed to open a connection. There is one record, which lives as long as the component.
struct ConnectionParameters {
  std::int16_t port_code = port_code::kLpt1;
  std::int16_t port_option = 4;  ///< option button, 0 to 9
  std::int16_t address = 4;      ///< bus address, 0 to 31
  std::string ip_address;
  std::int16_t ip_port = 7;  ///< ports above 32767 are stored as the same 16 bits with a sign
  std::string usb_address;   ///< serial number
  std::string node;          ///< replaces the configured device node of COM or RS485; empty: as configured
  std::int32_t baud = 0;     ///< rate; LPT: mode list index + 1, 95 for the fifth mode
  bool baud_configured = false;  ///< the rate is that of ports.ini, not the list's
  std::int32_t baud_index = 0;   ///< index in the list of rates
  std::int16_t parity = 1;       ///< 0 none, 1 even, 2 odd
  std::int16_t data_bits = 1;
  std::int16_t stop_bits = 1;
  std::int32_t receive_buffer = 512;  ///< bytes, never below 512
  std::int16_t lpt_mode = 0;          ///< 0 to 4
  std::int32_t timeout_ms = 0;        ///< 0 becomes 5000 when a connection is opened
  TimeoutEntries timeout_entries;
  TimeoutTexts timeout_texts;
  GpibOptions gpib;
  ExtendedRs232 extended_rs232;
  std::string modem_script;          ///< lines separated by CR LF; empty: no modem is dialled
  std::int32_t dial_timeout_s = 60;  ///< entries below 10 become 60
};

}  // namespace kolvane::device
