#pragma once

#include <cstdint>

#include "component/component_state.h"

namespace kolvane::component {

/// The only function of libkolvane-windows.so.
using OpenWindowFunction = void (*)(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx);
inline constexpr char kOpenWindowName[] = "KolvaneOpenWindow";

/// Implements MainClass::OpenTerminal, on `state`. Loads the library with the windows and Qt from the
/// component's own folder, once, so that programs without a window start without them; throws
/// std::runtime_error if that fails.
void OpenWindow(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx);

}  // namespace kolvane::component
