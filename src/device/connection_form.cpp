#include "device/connection_form.h"

#include <algorithm>
#include <limits>

#include "base/number.h"
#include "device/histories.h"
#include "device/port_table.h"

namespace kolvane::device {
namespace {

using namespace form_page;

struct Row {
  int front;
  std::array<int, 3> disabled;  // besides the USB page; unused places repeat the front page, which is enabled
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
  const SerialFields defaults;
  parameters.timeout_ms = 0;
  parameters.timeout_texts = {};
  ConnectionForm form = LoadForm(parameters, folder);
  form.serial.data_bits = defaults.data_bits;
  form.serial.stop_bits = defaults.stop_bits;
  form.serial.receive_buffer = defaults.receive_buffer;
  form.serial.dial_timeout = defaults.dial_timeout;
  return form;
}

constexpr std::int32_t kShortestDialTimeout = 10;
constexpr std::int32_t kDefaultDialTimeout = 60;
constexpr std::int32_t kFifthLptMode = 5;
constexpr std::int32_t kFifthLptModeValue = 95;
constexpr double kMillisecondsPerSecond = 1000;

double TypedWithin(std::string_view text, double lowest, double highest) {
  return std::clamp(base::LeadingTypedNumber(text), lowest, highest);
}

template <typename Int>
double LowestOf() {
  return static_cast<double>(std::numeric_limits<Int>::min());
}

template <typename Int>
double HighestOf() {
  return static_cast<double>(std::numeric_limits<Int>::max());
}

std::int32_t Scaled(std::string_view text, double factor) {
  return base::RoundToInt32(std::clamp(base::LeadingTypedNumber(text) * factor, LowestOf<std::int32_t>(),
                                       HighestOf<std::int32_t>()));
}

std::int32_t SecondsEntry(std::string_view text) { return Scaled(text, kMillisecondsPerSecond); }

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

std::int32_t TypedInt32(std::string_view text) {
  return base::RoundToInt32(TypedWithin(text, LowestOf<std::int32_t>(), HighestOf<std::int32_t>()));
}

std::int16_t TypedInt16(std::string_view text) {
  return base::RoundToInt16(TypedWithin(text, LowestOf<std::int16_t>(), HighestOf<std::int16_t>()));
}

std::uint8_t TypedByte(std::string_view text) {
  return static_cast<std::uint8_t>(base::RoundToInt16(TypedWithin(text, 0, HighestOf<std::uint8_t>())));
}

std::int16_t TypedIpPort(std::string_view text) {
  const double port = TypedWithin(text, LowestOf<std::int16_t>(), HighestOf<std::uint16_t>());
  return static_cast<std::int16_t>(base::RoundToInt32(port));
}

std::int32_t TypedReceiveBuffer(std::string_view text) {
  return std::max(TypedInt32(text), kSmallestReceiveBuffer);
}

std::int32_t TypedDialTimeout(std::string_view text) {
  const std::int32_t seconds = TypedInt32(text);
  return seconds < kShortestDialTimeout ? kDefaultDialTimeout : seconds;
}

std::int32_t BaudOfLptMode(std::int32_t mode_index) {
  const std::int32_t value = mode_index + 1;
  return value == kFifthLptMode ? kFifthLptModeValue : value;
}

std::int32_t Rs232Timeout(std::string_view text) { return std::max(SecondsEntry(text), 0); }

std::int32_t ParallelTimeout(std::string_view text) { return SecondsEntry(text); }

std::int32_t TcpIpTimeout(std::string_view text) { return SecondsEntry(text); }

std::int32_t GpibTimeout(std::string_view text) {
  const bool milliseconds = text.find("msec") != std::string_view::npos;
  return milliseconds ? Scaled(text, 1) : SecondsEntry(text);
}

}  // namespace kolvane::device
