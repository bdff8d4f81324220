#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/prompt.h"
#include "device/connection_parameters.h"
#include "device/device_state.h"
#include "device/histories.h"

namespace kolvane::device {

/// The pages of the connection dialog by their index.
namespace form_page {
inline constexpr int kRs232 = 0;
inline constexpr int kExtended = 1;
inline constexpr int kGpib = 2;
inline constexpr int kParallel = 3;
inline constexpr int kTcpIp = 4;
inline constexpr int kOffline = 5;
inline constexpr int kUsb = 6;
inline constexpr int kCount = 7;
}  // namespace form_page

/// Which page is in front and which are enabled. Selecting a port kind changes only what it must, so a page
/// that an earlier selection disabled may stay disabled.
struct FormPages {
  int front = form_page::kRs232;
  std::array<bool, form_page::kCount> enabled = {true, true, true, true, true, true, true};

  /// Brings the kind's page to the front and disables those of the others that the kind does not use. The
  /// page "RS232" is enabled for the kinds that use its parameters (COM, Offline, USB), "RS232 erweitert" is
  /// enabled again for COM. A number that is not an option changes nothing.
  void ClickPort(std::int16_t option);
};

inline constexpr const char* kInvalidAddress = "Ungültige Adresse";

// The fields of the connection dialog by page: text of typed fields, index of lists.

struct SerialFields {
  int baud = 0;
  int parity = 0;
  int data_bits = 1;
  int stop_bits = 0;
  std::string timeout;
  std::string receive_buffer = "4096";
  std::string rs485_address;
  std::string dial_timeout = "60";
  std::string modem_script;  ///< lines separated by CR LF
};

struct ExtendedFields {
  std::string xon_limit;
  std::string xoff_limit;
  std::string xon_char;
  std::string xoff_char;
  int dtr_control = 0;
  int rts_control = 0;
  std::array<bool, 9> checks{};  ///< by index in ExtPar
};

struct GpibFields {
  std::string address;
  std::string timeout = "1 s";
  std::string eos_char;
  bool send_eoi_on_write = false;
  bool send_eoi_with_eos = false;
  bool stop_read_on_eos = false;
  bool repeat_addressing = false;
};

struct ParallelFields {
  int mode = 0;
  std::string timeout = "10 s";
};

struct TcpIpFields {
  std::string address;
  std::string port;
  std::string timeout;
};

struct UsbFields {
  std::string address;
  std::string timeout;  ///< only stored; the time-out of the RS232 page is used
};

/// The connection dialog without its window.
struct ConnectionForm {
  std::int16_t port = -1;  ///< option button, -1 for none
  FormPages pages;
  SerialFields serial;
  ExtendedFields extended;
  GpibFields gpib;
  ParallelFields parallel;
  TcpIpFields tcpip;
  UsbFields usb;
  AddressHistory ip_history;
  AddressHistory usb_history;

  bool UsesRs485Address() const;

  /// The user selected an option button: shows the page and the presets of that kind.
  void ClickPort(std::int16_t option, const ConnectionParameters& stored);
};

/// Initial form: the stored connection, histories and modem script from `folder` (see HistoryFolder).
ConnectionForm LoadForm(const ConnectionParameters& stored, const std::string& folder);

/// Renews a serial line's rate: the one that ports.ini has for the port, or the chosen one if it had one
/// before. Any other rate stays as it is.
void TakeConfiguredRate(ConnectionParameters& parameters);

/// OK: stores the form and adds the address to its history. False if the kind needs a bus address and it is
/// not 0 to 31; then only the port kind is stored and the caller shows kInvalidAddress.
[[nodiscard]] bool StoreForm(ConnectionForm& form, ConnectionParameters& parameters);

/// Writes histories and modem script; only after OK.
void UnloadForm(const ConnectionForm& form, const std::string& folder);

/// Cancel: only records that the dialog was cancelled.
void CancelForm(DeviceState& state);

/// Everything that OK does, including message and files.
void ConfirmForm(ConnectionForm& form, ConnectionParameters& parameters, const std::string& folder,
                 base::Prompt& prompt);

/// Start-up in operating mode 2: loads the form from the settings and confirms it without showing it, so that
/// the derived values (port code, rate, time-out in milliseconds) are set. Data bits, stop bits, receive
/// buffer and dial time-out start with the defaults of SerialFields; the first three are stored only for the
/// kinds that use the RS232 page.
void ConfirmStoredConnection(ConnectionParameters& parameters, const std::string& component_folder,
                             base::Prompt& prompt);

/// Like ConfirmStoredConnection for a run without a dialog: reads the modem script (see ModemScriptFolder)
/// and writes no file. An empty folder means no script. Returns the result of StoreForm.
[[nodiscard]] bool CompleteConnection(ConnectionParameters& parameters, const std::string& component_folder);

/// Start-up in an operating mode without a device: derives only port code, rate and time-out from the stored
/// list entries. No file is read or written, nothing is reported.
void DeriveFromStored(ConnectionParameters& parameters);

// Numbers typed into a field: the leading number (comma or point, 0 if there is none), rounded half to even
// and clamped to the type's range, so that reading the dialog cannot fail.

std::int32_t TypedInt32(std::string_view text);
std::int16_t TypedInt16(std::string_view text);
std::uint8_t TypedByte(std::string_view text);

/// Like TypedInt16, with 32768 to 65535 stored as the same 16 bits with a sign.
std::int16_t TypedIpPort(std::string_view text);

inline constexpr std::int32_t kSmallestReceiveBuffer = 512;

/// The receive buffer in bytes, at least kSmallestReceiveBuffer.
std::int32_t TypedReceiveBuffer(std::string_view text);

/// The seconds that a modem may take to connect; below 10 becomes 60.
std::int32_t TypedDialTimeout(std::string_view text);

/// The baud value of a parallel port: `mode_index` + 1, and 95 for the fifth mode.
std::int32_t BaudOfLptMode(std::int32_t mode_index);

// The texts of time-out fields, in milliseconds.

/// Seconds; a negative entry becomes 0.
std::int32_t Rs232Timeout(std::string_view text);

/// Seconds; a negative entry stays negative.
std::int32_t ParallelTimeout(std::string_view text);
std::int32_t TcpIpTimeout(std::string_view text);

/// Milliseconds if the text contains "msec", otherwise seconds: the list's "100 ms" is 100000.
std::int32_t GpibTimeout(std::string_view text);

}  // namespace kolvane::device
