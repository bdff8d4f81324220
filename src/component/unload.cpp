#include "component/unload.h"

#include "component/settings.h"
#include "device/connection_choices.h"
#include "device/operating_mode.h"

namespace kolvane::component {

namespace {

// A host gives a rate; what is kept of one is its place in the list.
std::optional<SaveFailure> Save(ComponentState& state, SettingsStore& store) {
  device::ConnectionParameters connection = state.connection;
  if (state.host_parts)
    connection.baud_index = device::BaudIndex(connection.baud).value_or(connection.baud_index);
  return SaveSettings(store, {connection, state.terminal, state.window},
                      state.host_parts ? &*state.host_parts : nullptr);
}

}  // namespace

std::optional<SaveFailure> Unload(ComponentState& state, terminal::TerminalCore& core, terminal::LogSink& log,
                                  SettingsStore& store) {
  log.Close();
  const std::optional<SaveFailure> failure = Save(state, store);
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
