#pragma once

#include <string>

namespace kolvane::app {

/// Opens the terminal connected to a simulated amplifier of its own, with settings and a folder of its own
/// that go with it; the list's log stays in the current folder. With no display it runs the demo's command
/// list without a window, leaves nothing behind and says so. Returns the exit status; throws
/// std::runtime_error with a one-line English text.
int RunDemo(const std::string& folder);

}  // namespace kolvane::app
