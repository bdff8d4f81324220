#pragma once

#include <array>
#include <cstdint>
#include <string>

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

/// Which page is in front and which can be reached. A choice of port kind changes only what it has to, so
/// what an earlier choice disabled may stay so.
struct FormPages {
  int front = form_page::kRs232;
  std::array<bool, form_page::kCount> enabled = {true, true, true, true, true, true, true};

  /// The page of the kind comes to the front; of the others those that the kind has no use for are disabled.
  /// The page "RS232" is enabled for the kinds that take parameters from it (COM, Offline, USB), "RS232
  /// erweitert" again for COM. A number that is not an option changes nothing.
  void ClickPort(std::int16_t option);
};

inline constexpr const char* kInvalidAddress = "Ungültige Adresse";

// The fields of the connection dialog, page by page: text of what can be typed, index of what can be picked.

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
  std::string timeout;  ///< kept for the settings; the RS232 page's is the one that counts
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

  /// The user chose an option button: the page and the presets of that kind.
  void ClickPort(std::int16_t option, const ConnectionParameters& stored);
};

/// The form as it opens: the stored connection, histories and modem script from `folder` (see HistoryFolder).
ConnectionForm LoadForm(const ConnectionParameters& stored, const std::string& folder);

/// OK: stores the form and adds the address to its history. False, with nothing stored but the port kind, for
/// a kind that selects a bus address and one outside 0 to 31: the caller shows kInvalidAddress.
[[nodiscard]] bool StoreForm(ConnectionForm& form, ConnectionParameters& parameters);

/// Writes histories and modem script; after OK only.
void UnloadForm(const ConnectionForm& form, const std::string& folder);

/// Cancel: nothing but the mark that the dialog was cancelled.
void CancelForm(DeviceState& state);

/// What OK does, with the message and the files.
void ConfirmForm(ConnectionForm& form, ConnectionParameters& parameters, const std::string& folder,
                 base::Prompt& prompt);

/// The start in operating mode 2: loads the form from the settings and confirms it unseen, so that the record
/// gets what follows from them (port code, rate, time-out in milliseconds). Data bits, stop bits, receive
/// buffer and dial time-out start on the defaults of SerialFields; the record takes the first three over only
/// for the kinds that read the RS232 page.
void ConfirmStoredConnection(ConnectionParameters& parameters, const std::string& component_folder,
                             base::Prompt& prompt);

/// The same for a run that has no dialog: the modem script is read (see ModemScriptFolder), no file is
/// written. An empty folder stands for no script. False where StoreForm says so.
[[nodiscard]] bool CompleteConnection(ConnectionParameters& parameters, const std::string& component_folder);

/// The start in an operating mode without a device: port code, rate and time-out as the stored entries of
/// the lists say, nothing else. No file is read or written, nothing is reported.
void DeriveFromStored(ConnectionParameters& parameters);

}  // namespace kolvane::device
