#include "inspect/format_choice.h"

namespace kolvane::inspect {

FormatLayout ClickFormat(InspectorState& state, int option, int list_index) {
  state.format_code = option < format::kTemplate ? option : format::kTemplate + list_index;
  return {.lines_shown = state.format_code == format::kTemplate};
}

FormatLayout ClickTemplate(InspectorState& state, int list_index) {
  state.format_code = format::kTemplate + list_index;
  return {.lines_shown = state.format_code == format::kTemplate + 1};
}

}  // namespace kolvane::inspect
