#include <algorithm>

#include "base/number.h"
#include "device/connection_form.h"
#include "device/connection_texts.h"
#include "device/histories.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

template <typename List>
int NearestIndex(const List& list, std::int32_t index) {
  return std::clamp(index, 0, static_cast<std::int32_t>(list.size()) - 1);
}

// The index of a number in a list of numbers, `otherwise` if it is missing.
template <typename List>
int IndexOf(const List& list, std::int32_t value, int otherwise) {
  const auto at = std::find(list.begin(), list.end(), std::to_string(value));
  return at == list.end() ? otherwise : static_cast<int>(at - list.begin());
}

template <typename List>
bool Has(const List& list, std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < list.size();
}

// The selected kind's address is always shown; that of another kind only if it is in this kind's range.
std::string Address(const ConnectionParameters& p, bool effective, std::int16_t lowest,
                    std::int16_t highest) {
  const bool fits = p.address >= lowest && p.address <= highest;
  return effective || fits ? std::to_string(p.address) : kAddressChoices.front();
}

std::string GpibAddress(const ConnectionParameters& p) {
  const PortKind* kind = PortKindOfOption(p.port_option);
  return Address(p, kind != nullptr && kind->code == port_code::kGpib, 1, kAddressChoices.size());
}

std::string Rs485Address(const ConnectionParameters& p) {
  const PortKind* kind = PortKindOfOption(p.port_option);
  return Address(p, kind != nullptr && IsRs485(kind->code), 0, kLastAddress);
}

// A stored value that the field would not accept is not shown.
std::string ReceiveBuffer(const ConnectionParameters& p, const std::string& otherwise) {
  return p.receive_buffer < kSmallestReceiveBuffer ? otherwise : std::to_string(p.receive_buffer);
}

SerialFields LoadSerial(const ConnectionParameters& p, const std::string& folder) {
  const SerialFields first;
  return {.baud = NearestIndex(kBaudChoices, p.baud_index),
          .parity = NearestIndex(kParityWords, p.parity),
          .data_bits = IndexOf(kDataBitsChoices, p.data_bits, first.data_bits),
          .stop_bits = IndexOf(kStopBitsChoices, p.stop_bits, first.stop_bits),
          .timeout = {},
          .receive_buffer = ReceiveBuffer(p, first.receive_buffer),
          .rs485_address = Rs485Address(p),
          .dial_timeout = std::to_string(p.dial_timeout_s),
          .modem_script = LoadModemScript(folder)};
}

ExtendedFields LoadExtended(const ExtendedRs232& record) {
  ExtendedFields fields{.xon_limit = std::to_string(record.xon_limit),
                        .xoff_limit = std::to_string(record.xoff_limit),
                        .xon_char = std::to_string(record.xon_char),
                        .xoff_char = std::to_string(record.xoff_char),
                        .dtr_control = NearestIndex(kDtrChoices, record.dtr_control),
                        .rts_control = NearestIndex(kRtsChoices, record.rts_control),
                        .checks = {}};
  for (const ExtendedCheck& check : kExtendedChecks)
    fields.checks[static_cast<std::size_t>(check.index)] = record.*check.field != 0;
  return fields;
}

GpibFields LoadGpib(const ConnectionParameters& p) {
  return {.address = GpibAddress(p),
          .eos_char = std::to_string(p.gpib.eos_char),
          .send_eoi_on_write = p.gpib.send_eoi_on_write != 0,
          .send_eoi_with_eos = p.gpib.send_eoi_with_eos != 0,
          .stop_read_on_eos = p.gpib.stop_read_on_eos != 0,
          .repeat_addressing = p.gpib.repeat_addressing != 0};
}

// The text of the field at the last OK, else the stored one.
std::string LastText(const std::string& typed, const std::string& stored) {
  return typed.empty() ? stored : typed;
}

template <typename List>
std::string StoredText(const List& list, std::int32_t index, const std::string& otherwise) {
  return Has(list, index) ? list[static_cast<std::size_t>(index)] : otherwise;
}

std::string SecondsText(std::int32_t milliseconds) { return base::DoubleText(milliseconds / 1000.0, ","); }

// Stored seconds are whole: a fraction is shown as it was typed, and any other text as the stored number.
std::string LastSeconds(const std::string& typed, std::int32_t seconds) {
  const std::string stored = std::to_string(seconds);
  return TcpIpTimeout(typed) == TcpIpTimeout(stored) ? stored : LastText(typed, stored);
}

// The time-out in use is shown where the selected kind's page says 0, or where its list has no entry for the
// stored text and another one is shown.
void ShowEffectiveTimeout(ConnectionForm& form, const ConnectionParameters& p) {
  const auto show = [&p](std::string& text, auto meaning, const std::string& effective,
                         bool is_entry = true) {
    const std::int32_t shown = meaning(text);
    if (shown == 0 || (!is_entry && shown != p.timeout_ms)) text = effective;
  };
  const TimeoutEntries& entries = p.timeout_entries;
  switch (PageOfCode(p.port_code)) {
    case ParameterPage::kRs232:
      return show(form.serial.timeout, Rs232Timeout, SecondsText(p.timeout_ms));
    case ParameterPage::kTcpIp:
      return show(form.tcpip.timeout, TcpIpTimeout, SecondsText(p.timeout_ms));
    case ParameterPage::kGpib:
      return show(form.gpib.timeout, GpibTimeout, std::to_string(p.timeout_ms) + " msec",
                  Has(kGpibTimeoutChoices, entries.gpib_index));
    case ParameterPage::kParallel:
      return show(form.parallel.timeout, ParallelTimeout, SecondsText(p.timeout_ms) + " s",
                  Has(kLptTimeoutChoices, entries.lpt_index));
  }
}

void LoadTimeouts(ConnectionForm& form, const ConnectionParameters& p) {
  const TimeoutEntries& stored = p.timeout_entries;
  const TimeoutTexts& typed = p.timeout_texts;
  form.serial.timeout = LastSeconds(typed.rs232, stored.rs232_seconds);
  form.tcpip.timeout = LastSeconds(typed.tcpip, stored.tcpip_seconds);
  form.usb.timeout = LastSeconds(typed.usb, stored.usb_seconds);
  form.gpib.timeout =
      LastText(typed.gpib, StoredText(kGpibTimeoutChoices, stored.gpib_index, form.gpib.timeout));
  form.parallel.timeout =
      LastText(typed.lpt, StoredText(kLptTimeoutChoices, stored.lpt_index, form.parallel.timeout));
  if (p.timeout_ms > 0) ShowEffectiveTimeout(form, p);
}

}  // namespace

void ConnectionForm::ClickPort(std::int16_t option, const ConnectionParameters& stored) {
  const PortKind* kind = PortKindOfOption(option);
  if (kind == nullptr) return;
  port = option;
  pages.ClickPort(option);
  if (kind->page == ParameterPage::kParallel) {
    parallel.mode = NearestIndex(kLptModeChoices, stored.lpt_mode);
    parallel.timeout = ParallelFields{}.timeout;
  } else if (kind->page == ParameterPage::kGpib) {
    gpib.timeout = GpibFields{}.timeout;
  }
}

ConnectionForm LoadForm(const ConnectionParameters& stored, const std::string& folder) {
  ConnectionForm form;
  form.ip_history = LoadIpHistory(folder);
  form.usb_history = LoadUsbHistory(folder);
  form.serial = LoadSerial(stored, folder);
  form.extended = LoadExtended(stored.extended_rs232);
  form.gpib = LoadGpib(stored);
  form.parallel.mode = NearestIndex(kLptModeChoices, stored.lpt_mode);
  form.tcpip = {stored.ip_address, IpPortText(stored.ip_port), {}};
  form.usb = {stored.usb_address, {}};
  form.ClickPort(stored.port_option, stored);
  LoadTimeouts(form, stored);
  return form;
}

}  // namespace kolvane::device
