#include <algorithm>

#include "device/connection_form.h"
#include "device/connection_texts.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

template <typename List>
const char* Entry(const List& list, int index) {
  return list[static_cast<std::size_t>(index)];
}

// -1 if the text is not in the list.
template <typename List>
std::int32_t IndexOf(const List& list, const std::string& text) {
  const auto at = std::find(list.begin(), list.end(), text);
  return at == list.end() ? -1 : static_cast<std::int32_t>(at - list.begin());
}

std::int16_t AddressOf(const ConnectionForm& form, const ConnectionParameters& p) {
  if (form.UsesRs485Address()) return TypedInt16(form.serial.rs485_address);
  if (p.port_code == port_code::kGpib) return TypedInt16(form.gpib.address);
  return p.address;
}

// TCP/IP and USB are opened by their own address; offline opens nothing.
bool SelectsAddress(std::int16_t code) { return !IsPointToPoint(code) && code != port_code::kOffline; }

void StoreAddress(ConnectionForm& form, ConnectionParameters& p) {
  if (p.port_code == port_code::kTcpIp) {
    p.ip_address = form.tcpip.address;
    p.ip_port = TypedIpPort(form.tcpip.port);
    Remember(form.ip_history, form.tcpip.address);
  } else if (p.port_code == port_code::kUsb) {
    p.usb_address = form.usb.address;
    Remember(form.usb_history, form.usb.address);
  }
}

// The settings may hold any index, and an invalid address leaves it in the record.
std::int32_t ChosenRate(const ConnectionParameters& p) {
  constexpr auto kLast = static_cast<std::int32_t>(kBaudChoices.size()) - 1;
  return TypedInt32(Entry(kBaudChoices, std::clamp(p.baud_index, 0, kLast)));
}

void StoreSerial(const SerialFields& fields, ConnectionParameters& p) {
  p.baud_index = fields.baud;
  p.baud = ChosenRate(p);
  p.baud_configured = false;
  TakeConfiguredRate(p);
  p.parity = static_cast<std::int16_t>(fields.parity);
  p.data_bits = TypedInt16(Entry(kDataBitsChoices, fields.data_bits));
  p.stop_bits = TypedInt16(Entry(kStopBitsChoices, fields.stop_bits));
  p.timeout_ms = Rs232Timeout(fields.timeout);
  p.receive_buffer = TypedReceiveBuffer(fields.receive_buffer);
}

void StoreGpib(const GpibFields& fields, ConnectionParameters& p) {
  p.gpib = {.send_eoi_on_write = fields.send_eoi_on_write,
            .send_eoi_with_eos = fields.send_eoi_with_eos,
            .stop_read_on_eos = fields.stop_read_on_eos,
            .eos_char = TypedInt16(fields.eos_char),
            .repeat_addressing = fields.repeat_addressing};
  p.timeout_ms = GpibTimeout(fields.timeout);
}

void StorePage(const ConnectionForm& form, ConnectionParameters& p) {
  switch (PageOfCode(p.port_code)) {
    case ParameterPage::kRs232:
      return StoreSerial(form.serial, p);
    case ParameterPage::kGpib:
      return StoreGpib(form.gpib, p);
    case ParameterPage::kTcpIp:
      p.timeout_ms = TcpIpTimeout(form.tcpip.timeout);
      return;
    case ParameterPage::kParallel:
      p.baud = BaudOfLptMode(form.parallel.mode);
      p.baud_configured = false;
      p.timeout_ms = ParallelTimeout(form.parallel.timeout);
      return;
  }
}

TimeoutEntries EntriesOf(const ConnectionForm& form) {
  return {.rs232_seconds = TypedInt32(form.serial.timeout),
          .tcpip_seconds = TypedInt32(form.tcpip.timeout),
          .usb_seconds = TypedInt32(form.usb.timeout),
          .gpib_index = IndexOf(kGpibTimeoutChoices, form.gpib.timeout),
          .lpt_index = IndexOf(kLptTimeoutChoices, form.parallel.timeout)};
}

TimeoutTexts TextsOf(const ConnectionForm& form) {
  return {.rs232 = form.serial.timeout,
          .tcpip = form.tcpip.timeout,
          .usb = form.usb.timeout,
          .gpib = form.gpib.timeout,
          .lpt = form.parallel.timeout};
}

void StoreExtended(const ExtendedFields& fields, ExtendedRs232& record) {
  record.xon_limit = TypedInt16(fields.xon_limit);
  record.xoff_limit = TypedInt16(fields.xoff_limit);
  record.xon_char = TypedByte(fields.xon_char);
  record.xoff_char = TypedByte(fields.xoff_char);
  record.dtr_control = fields.dtr_control;
  record.rts_control = fields.rts_control;
  for (const ExtendedCheck& check : kExtendedChecks)
    record.*check.field = fields.checks[static_cast<std::size_t>(check.index)];
}

}  // namespace

void TakeConfiguredRate(ConnectionParameters& p) {
  if (PageOfCode(p.port_code) != ParameterPage::kRs232) return;
  // The configured rate applies only to the configured node.
  const auto rate = p.node.empty() ? ConfiguredRate(p.port_code) : std::nullopt;
  if (!rate && !p.baud_configured) return;
  p.baud = rate ? *rate : ChosenRate(p);
  p.baud_configured = rate.has_value();
}

bool StoreForm(ConnectionForm& form, ConnectionParameters& p) {
  if (const PortKind* kind = PortKindOfOption(form.port)) {
    p.port_option = kind->option;
    p.port_code = kind->code;
  }
  const std::int16_t address = AddressOf(form, p);
  if (SelectsAddress(p.port_code) && (address < 0 || address > kLastAddress)) return false;
  p.address = address;
  StoreAddress(form, p);
  StorePage(form, p);
  p.timeout_entries = EntriesOf(form);
  p.timeout_texts = TextsOf(form);
  StoreExtended(form.extended, p.extended_rs232);
  p.dial_timeout_s = TypedDialTimeout(form.serial.dial_timeout);
  p.modem_script = form.serial.modem_script;
  return true;
}

}  // namespace kolvane::device
