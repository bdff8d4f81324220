#pragma once

#include <string>

namespace kolvane::app {

/// Opens the terminal connected to a simulated amplifier of its own, with settings and a folder of its own
/// that go with it. Returns when the window has been closed; throws std::runtime_error with a one-line
/// English text.
void RunDemo(const std::string& folder, int close_descriptor);

}  // namespace kolvane::app
