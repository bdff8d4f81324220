#pragma once

#include <string>

namespace kolvane::app {

/// Opens the terminal connected to a simulated amplifier of its own, with settings, the component's files and
/// a current folder of its own. They go with it, but what the user has saved there stays, and a line says
/// where. With no display it runs the demo's command list without a window and says so. Returns the exit
/// status; throws std::runtime_error with a one-line English text.
int RunDemo(const std::string& folder);

}  // namespace kolvane::app
