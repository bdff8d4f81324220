#include "component/settings.h"

#include <optional>
#include <string>
#include <variant>

#include "base/number.h"
#include "base/runtime_error.h"
#include "base/system.h"
#include "component/texts.h"
#include "device/port_table.h"

namespace kolvane::component {
namespace {

using base::RuntimeError;

// Fields with their own rule; a plain pointer uses the conversion of its type.
struct IpPort {  // stored as typed; above 32767 kept as the same 16 bits with a sign
  std::int16_t* value;
};
struct Index {  // of a list; it must not be past the last entry
  std::uint8_t* value;
  std::uint8_t entries;
};
struct PortOption {  // must be an existing kind
  std::int16_t* value;
};
struct NumberText {  // shown as it is, but must be a 32-bit whole number
  std::string* value;
};
struct ReceiveBuffer {  // stored in 16 bits
  std::int32_t* value;
};

using Field = std::variant<std::int16_t*, std::int32_t*, bool*, std::string*, IpPort, Index, PortOption,
                           NumberText, ReceiveBuffer>;

struct Converter {
  const std::string& text;

  void operator()(std::int16_t* field) const { *field = base::TextToInt16(text); }
  void operator()(std::int32_t* field) const { *field = base::TextToInt32(text); }
  void operator()(bool* field) const {
    const std::optional<double> number = base::WholeTextNumber(text);
    if (!number) throw RuntimeError(RuntimeError::Kind::kTypeMismatch);
    *field = *number != 0;
  }
  void operator()(std::string* field) const { *field = text; }
  void operator()(ReceiveBuffer field) const { *field.value = base::TextToInt16(text); }

  void operator()(IpPort field) const {
    const std::int32_t port = base::TextToInt32(text);
    if (port < INT16_MIN || port > UINT16_MAX) throw RuntimeError(RuntimeError::Kind::kOverflow);
    *field.value = static_cast<std::int16_t>(port);
  }

  void operator()(Index field) const {
    const std::int32_t index = base::TextToInt32(text);
    if (index < 0 || index > UINT8_MAX) throw RuntimeError(RuntimeError::Kind::kOverflow);
    if (index >= field.entries) throw RuntimeError(RuntimeError::Kind::kSubscript);
    *field.value = static_cast<std::uint8_t>(index);
  }

  void operator()(PortOption field) const {
    const std::int16_t option = base::TextToInt16(text);
    if (device::PortKindOfOption(option) == nullptr) throw RuntimeError(RuntimeError::Kind::kSubscript);
    *field.value = option;
  }

  void operator()(NumberText field) const {
    base::TextToInt32(text);
    *field.value = text;
  }
};

struct Writer {
  std::string operator()(const std::int16_t* field) const { return std::to_string(*field); }
  std::string operator()(const std::int32_t* field) const { return std::to_string(*field); }
  std::string operator()(const bool* field) const { return *field ? "-1" : "0"; }
  std::string operator()(const std::string* field) const { return *field; }
  std::string operator()(ReceiveBuffer field) const { return std::to_string(*field.value); }
  std::string operator()(IpPort field) const {
    return std::to_string(static_cast<std::uint16_t>(*field.value));
  }
  std::string operator()(Index field) const { return std::to_string(*field.value); }
  std::string operator()(PortOption field) const { return std::to_string(*field.value); }

  // Any other text would prevent the terminal from opening next time.
  std::string operator()(NumberText field) const {
    try {
      base::TextToInt32(*field.value);
      return *field.value;
    } catch (const RuntimeError&) {
      return terminal::ReceiveShown{}.timeout;
    }
  }
};

enum Scope { kConnection, kAlways };
enum Use { kWritten, kReadOnly };

struct Row {
  const char* section;
  const char* key;
  const char* fallback;
  Scope scope;  // kConnection: not read if the host has the connection
  Use use;
  Field (*field)(SettingsTarget&);
  bool HostParts::*part = nullptr;  // the part of a host's connection that it stores
};

const Row kRows[] = {
    {"PORT", "PORT", "4", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return PortOption{&t.connection.port_option}; }, &HostParts::kind},
    {"PORT", "ADDRESS", "4", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.address; }, &HostParts::address},
    {"PORT", "IPADDRESS", "", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.ip_address; }, &HostParts::ip_address},
    {"PORT", "IPPORT", "7", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return IpPort{&t.connection.ip_port}; }, &HostParts::ip_address},
    {"PORT", "USBADDRESS", "", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.usb_address; }, &HostParts::usb_address},
    {"PORT", "RSTIMO", "5", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.timeout_entries.rs232_seconds; }},
    {"PORT", "GPIBTIMO", "4", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.timeout_entries.gpib_index; }},
    {"PORT", "LPTTIMO", "0", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.timeout_entries.lpt_index; }},
    {"PORT", "TCPIPTIMO", "5", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.timeout_entries.tcpip_seconds; }},
    {"PORT", "USBTIMO", "5", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.timeout_entries.usb_seconds; }},
    {"PORT", "BAUD", "0", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.baud_index; }, &HostParts::baud},
    {"PORT", "PARITY", "1", kConnection, kWritten,
     [](SettingsTarget& t) -> Field { return &t.connection.parity; }, &HostParts::parity},
    {"PORT", "RCVBUF", "1", kConnection, kReadOnly,
     [](SettingsTarget& t) -> Field { return ReceiveBuffer{&t.connection.receive_buffer}; }},
    {"PORT", "DATABITS", "1", kConnection, kReadOnly,
     [](SettingsTarget& t) -> Field { return &t.connection.data_bits; }},
    {"PORT", "STOPBITS", "1", kConnection, kReadOnly,
     [](SettingsTarget& t) -> Field { return &t.connection.stop_bits; }},
    {"TERMINAL", "RCVMODE", "0", kAlways, kWritten,
     [](SettingsTarget& t) -> Field {
       return Index{&t.terminal.receive.mode, 3};
     }},
    {"TERMINAL", "RCVFORMAT", "0", kAlways, kWritten,
     [](SettingsTarget& t) -> Field {
       return Index{&t.terminal.receive.binary_display, 2};
     }},
    {"TERMINAL", "RCVTIMO", "3000", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return NumberText{&t.terminal.shown.timeout}; }},
    {"TERMINAL", "SENDTERM", "\n", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.terminal.receive.send_terminator; }},
    {"TERMINAL", "RCVTERM", "\r\n", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.terminal.receive.receive_terminator; }},
    {"PORT", "COMLOG", "0", kAlways, kWritten, [](SettingsTarget& t) -> Field { return &t.window.com_log; }},
    {"TERMINAL", "FONTNAME", "Courier New", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.pane.font_name; }},
    {"TERMINAL", "FONTSIZE", "10", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.pane.font_size; }},
    {"TERMINAL", "FONTBOLD", "0", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.pane.font_bold; }},
    {"TERMINAL", "FONTCOLOR", "0", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.pane.font_color; }},
    {"TERMINAL", "BACKCOLOR", "16777215", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.pane.back_color; }},
    {"TERMINAL", "SHOWCOMMANDS", "-1", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.terminal.options.show_commands; }},
    // Both are read from their own section and written elsewhere: every session starts without them.
    {"SHOWRESPONSETIME", "SHOWCOMMANDS", "0", kAlways, kReadOnly,
     [](SettingsTarget& t) -> Field { return &t.terminal.options.show_response_times; }},
    {"LINEBREAKS", "SHOWCOMMANDS", "0", kAlways, kReadOnly,
     [](SettingsTarget& t) -> Field { return &t.terminal.options.line_breaks; }},
    {"COMMANDLIST", "FONTNAME", "Courier New", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.command_list.font_name; }},
    {"COMMANDLIST", "FONTSIZE", "10", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.command_list.font_size; }},
    {"COMMANDLIST", "FONTBOLD", "0", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.command_list.font_bold; }},
    {"COMMANDLIST", "FONTCOLOR", "0", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.command_list.font_color; }},
    {"COMMANDLIST", "BACKCOLOR", "16777215", kAlways, kWritten,
     [](SettingsTarget& t) -> Field { return &t.window.command_list.back_color; }},
};

constexpr char kExtrasSection[] = "EXTRAS";

const char* FlagText(bool value) { return value ? "1" : "0"; }

}  // namespace

void LoadSettings(const SettingsStore& store, SettingsTarget target, bool with_connection) {
  for (const Row& row : kRows) {
    if (row.scope == kConnection && !with_connection) continue;
    const std::string value = store.Read(row.section, row.key, row.fallback);
    try {
      std::visit(Converter{value}, row.field(target));
    } catch (const RuntimeError& error) {
      throw RuntimeError(error.kind(),
                         texts::NotLoaded(row.section, row.key, value, error.what(), store.File()));
    }
  }
}

void LoadStoredConnection(const std::string& settings_file, device::ConnectionParameters& connection,
                          terminal::TerminalState& terminal) {
  terminal::WindowSettings unused;
  LoadSettings(*OpenIniStore(settings_file), {connection, terminal, unused}, true);
}

std::optional<SaveFailure> SaveSettings(SettingsStore& store, SettingsTarget target, const HostParts* host) {
  for (const Row& row : kRows) {
    if (row.use != kWritten) continue;
    if (host == nullptr || row.scope == kAlways || (row.part != nullptr && host->*row.part)) {
      store.Write(row.section, row.key, std::visit(Writer{}, row.field(target)));
    } else if (!store.Find(row.section, row.key)) {
      store.Write(row.section, row.key, row.fallback);
    }
  }
  store.Write("TERMINAL", "SHOWRESPONSETIME", Writer{}(&target.terminal.options.show_response_times));
  store.Write("TERMINAL", "LINEBREAKS", Writer{}(&target.terminal.options.line_breaks));
  return store.Flush();
}

std::string UserExtrasFile() {
  const auto folder = base::UserConfigFolder();
  return folder.empty() ? std::string() : (folder / "Extras.ini").string();
}

terminal::Extras ExtrasFile::Load() const {
  terminal::Extras extras;
  for (const terminal::ExtrasFlag& flag : terminal::kExtrasFlags) {
    const std::string text = file_.Read(kExtrasSection, std::string(flag.name));
    if (text == FlagText(false) || text == FlagText(true)) extras.*flag.value = text == FlagText(true);
  }
  return extras;
}

std::optional<SaveFailure> ExtrasFile::Save(const terminal::Extras& extras) {
  const terminal::Extras before = Load();
  for (const terminal::ExtrasFlag& flag : terminal::kExtrasFlags) {
    const bool value = extras.*flag.value;
    if (value != before.*flag.value) file_.Write(kExtrasSection, std::string(flag.name), FlagText(value));
  }
  return file_.Save();
}

}  // namespace kolvane::component
