#include "device/connection_form.h"

#include "device/histories.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

using namespace form_page;

struct Row {
  int front;
  std::array<int, 3> disabled;  // besides the USB page; repeats the front page if fewer
};

constexpr Row kSerialRow = {kRs232, {kRs232, kRs232, kRs232}};
constexpr Row kParallelRow = {kParallel, {kExtended, kGpib, kParallel}};

// By option button.
constexpr std::array<Row, 10> kRows = {{
    kSerialRow,
    kSerialRow,
    kSerialRow,
    kSerialRow,
    kParallelRow,
    kParallelRow,
    {kGpib, {kExtended, kParallel, kGpib}},
    {kOffline, {kExtended, kGpib, kParallel}},
    {kTcpIp, {kExtended, kGpib, kTcpIp}},
    {kUsb, {kUsb, kUsb, kUsb}},
}};

// On start-up only the settings count, not an earlier session in the same process.
ConnectionForm StartForm(ConnectionParameters& parameters, const std::string& folder) {
  const SerialFields usual;
  parameters.timeout_ms = 0;
  parameters.timeout_texts = {};
  ConnectionForm form = LoadForm(parameters, folder);
  form.serial.data_bits = usual.data_bits;
  form.serial.stop_bits = usual.stop_bits;
  form.serial.receive_buffer = usual.receive_buffer;
  form.serial.dial_timeout = usual.dial_timeout;
  return form;
}

}  // namespace

void FormPages::ClickPort(std::int16_t option) {
  const PortKind* kind = PortKindOfOption(option);
  if (kind == nullptr) return;
  const Row& row = kRows[static_cast<std::size_t>(option)];
  const auto set = [this](int page, bool on) { enabled[static_cast<std::size_t>(page)] = on; };
  set(kUsb, false);
  for (const int page : row.disabled) set(page, false);
  set(kRs232, kind->page == ParameterPage::kRs232);
  if (row.front == kRs232) set(kExtended, true);
  set(row.front, true);
  front = row.front;
}

bool ConnectionForm::UsesRs485Address() const {
  const PortKind* kind = PortKindOfOption(port);
  return kind != nullptr && IsRs485(kind->code);
}

void UnloadForm(const ConnectionForm& form, const std::string& folder) {
  SaveIpHistory(folder, form.ip_history);
  SaveUsbHistory(folder, form.usb_history);
  SaveModemScript(folder, form.serial.modem_script);
}

void CancelForm(DeviceState& state) { state.open_step_status = -1; }

void ConfirmForm(ConnectionForm& form, ConnectionParameters& parameters, const std::string& folder,
                 base::Prompt& prompt) {
  if (!StoreForm(form, parameters)) prompt.ShowError(kInvalidAddress);
  UnloadForm(form, folder);
}

void ConfirmStoredConnection(ConnectionParameters& parameters, const std::string& component_folder,
                             base::Prompt& prompt) {
  const std::string folder = HistoryFolder(component_folder);
  ConnectionForm form = StartForm(parameters, folder);
  ConfirmForm(form, parameters, folder, prompt);
}

bool CompleteConnection(ConnectionParameters& parameters, const std::string& component_folder) {
  ConnectionForm form = StartForm(parameters, ModemScriptFolder(component_folder));
  return StoreForm(form, parameters);
}

void DeriveFromStored(ConnectionParameters& parameters) {
  ConnectionParameters confirmed = parameters;
  static_cast<void>(CompleteConnection(confirmed, ""));
  parameters.port_code = confirmed.port_code;
  parameters.baud = confirmed.baud;
  parameters.timeout_ms = confirmed.timeout_ms;
}

}  // namespace kolvane::device
