#include "device/connection_form.h"

#include "device/history_folder.h"
#include "device/modem_script_file.h"
#include "device/port_table.h"

namespace kolvane::device {

namespace {

// What the settings do not decide, as most instruments have it.
void SetUsualValues(ConnectionParameters& parameters) {
  parameters.data_bits = 8;
  parameters.stop_bits = 1;
  parameters.receive_buffer = 4096;
  parameters.dial_timeout_s = 60;
}

}  // namespace

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
  SetUsualValues(parameters);
  const std::string folder = HistoryFolder(component_folder);
  ConnectionForm form = LoadForm(parameters, folder);
  ConfirmForm(form, parameters, folder, prompt);
}

bool CompleteConnection(ConnectionParameters& parameters, const std::string& component_folder) {
  SetUsualValues(parameters);
  ConnectionForm form = LoadForm(parameters, ModemScriptFolder(component_folder));
  return StoreForm(form, parameters);
}

}  // namespace kolvane::device
