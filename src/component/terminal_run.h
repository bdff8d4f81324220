#pragma once

#include <cstdint>

#include "component/component_state.h"

namespace kolvane::component {

/// What MainClass::OpenTerminal promises, on `state`.
void RunTerminal(ComponentState& state, std::int16_t oper_mode, std::int16_t dev_idx);

}  // namespace kolvane::component
