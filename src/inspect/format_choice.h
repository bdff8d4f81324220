#pragma once

#include "inspect/inspector_state.h"

namespace kolvane::inspect {

/// What a choice of the format changes in the dialog; nothing is decoded by it.
struct FormatLayout {
  bool lines_shown = false;  ///< the list of a template's lines, for which the dump makes room
};

/// The option button `option` was clicked while the template list stood at `list_index` (-1: at none). The
/// lines are shown for the first template alone.
FormatLayout ClickFormat(InspectorState& state, int option, int list_index);

/// A template was chosen. The lines are shown for the second template alone.
FormatLayout ClickTemplate(InspectorState& state, int list_index);

}  // namespace kolvane::inspect
