#include "headless/connection_options.h"

#include <string>

#include "base/encoding.h"
#include "device/port_table.h"
#include "terminal/receive_controls.h"

namespace kolvane::headless {
namespace {

static_assert(CommandRunOptions::kLargestCount == terminal::kCountedAnswerLimit);

template <typename Field, typename Value>
void Set(Field& field, const std::optional<Value>& value) {
  if (value) field = static_cast<Field>(*value);
}

void SetTerminator(std::string& field, const std::optional<std::string>& bytes) {
  if (bytes) field = base::FromWindows1252(*bytes);
}

}  // namespace

void ApplyConnectionOptions(const CommandRunOptions& options, device::ConnectionParameters& parameters) {
  Set(parameters.timeout_ms, options.TimeoutMs);
  // For other ports the same fields mean something else, such as the mode of a parallel port.
  if (device::PageOfCode(parameters.port_code) != device::ParameterPage::kRs232) return;
  Set(parameters.baud, options.Baud);
  Set(parameters.parity, options.Parity);
  Set(parameters.data_bits, options.DataBits);
  Set(parameters.stop_bits, options.StopBits);
}

void ApplyTerminalOptions(const CommandRunOptions& options, terminal::ReceiveControls& controls,
                          terminal::TerminalState& state) {
  if (options.TimeoutMs) controls.EditTimeout(std::to_string(*options.TimeoutMs));
  if (options.Count) controls.EditCount(std::to_string(*options.Count));
  // Selecting the format selects a mode too, so a requested mode is set after it.
  if (options.Binary) controls.PickFormat(terminal::receive_format::kBinary);
  if (options.ReceiveMode) controls.PickMode(static_cast<int>(*options.ReceiveMode));
  SetTerminator(state.receive.send_terminator, options.SendTerminator);
  SetTerminator(state.receive.receive_terminator, options.ReceiveTerminator);
  state.options.show_commands = options.ShowCommands;
  state.options.show_response_times = options.ShowTimes;
  state.flush_first = options.Flush;
  state.extras.queries_only = options.QueriesOnly;
  state.extras.blocks = options.Blocks;
  state.extras.device_words = options.DeviceWords;
  state.extras.reconnect = options.Reconnect;
  state.extras.utf8 = options.Utf8;
  state.extras.log_time_stamps = options.TimeStamps;
}

}  // namespace kolvane::headless
