#include "terminal/terminal_core.h"

#include "base/number.h"
#include "device/connection_texts.h"

namespace kolvane::terminal {

void ApplyExtras(const TerminalSlices& slices) {
  const bool own = slices.device.OperMode == device::operating_mode::kPortLibrary;
  slices.device.utf8 = own && slices.terminal.extras.utf8;
  slices.terminal.output.log_time_stamps = slices.terminal.extras.log_time_stamps;
}

TerminalCore::TerminalCore(TerminalSlices slices, device::PortLibrarySource& library, FrontEnd front_end)
    : waits(library, clock, front_end.connection_view),
      device(slices.device, slices.connection, library, clock, waits),
      output(slices.terminal.output, front_end.pane, front_end.log),
      connect(
          device, slices.device, output, front_end.prompt, front_end.connection_view,
          {.description = [&parameters = slices.connection] { return ConnectionDescription(parameters); }}),
      session(device, slices.device, slices.terminal, output, connect),
      exchange(session, waits, slices.terminal.options, output, clock, base::SystemDecimalSign()) {
  ApplyExtras(slices);
  connect.ReconnectAfterLoss(slices.terminal.extras.reconnect, slices.connection.timeout_ms, clock);
}

}  // namespace kolvane::terminal
