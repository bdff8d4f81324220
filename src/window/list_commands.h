#pragma once

#include "window/extras_menu.h"
#include "window/script_view.h"

namespace kolvane::window {

/// Puts the items of mnuExtras that work on the command list into the menu. Both outlive the window's events.
void AddListCommands(ExtrasMenu& extras, ScriptView& script);

}  // namespace kolvane::window
