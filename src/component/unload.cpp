#include "component/unload.h"

#include "component/settings.h"
#include "device/operating_mode.h"

namespace kolvane::component {

std::optional<SaveFailure> Unload(ComponentState& state, terminal::TerminalCore& core, terminal::LogSink& log,
                                  SettingsStore& store) {
  log.Close();
  const std::optional<SaveFailure> failure =
      SaveSettings(store, {state.connection, state.terminal, state.window});
  const bool own_connection = state.device.OperMode == device::operating_mode::kPortLibrary;
  if (!own_connection && !state.device.connected) core.connect.Connect();
  if (own_connection && state.device.connected) core.device.Close();
  // From here on the terminal holds no connection; a host's device is the host's again.
  state.device.connected = false;
  state.device.gObj.reset();
  state.can_unload = true;
  return failure;
}

}  // namespace kolvane::component
