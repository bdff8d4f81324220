#pragma once

#include <cstdint>

#include "component/component_state.h"

namespace kolvane::component {

/// The one function of libkolvane-windows.so.
using OpenWindowFunction = void (*)(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx);
inline constexpr char kOpenWindowName[] = "KolvaneOpenWindow";

/// What MainClass::OpenTerminal promises, on `state`. Loads the library with the windows and Qt from beside
/// the component's own file, once, so that whoever needs no window starts without them; throws
/// std::runtime_error where that fails.
void OpenWindow(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx);

}  // namespace kolvane::component
