#include "window/list_commands.h"

namespace kolvane::window {

void AddListCommands(ExtrasMenu& extras, ScriptView& script) {
  script::CommandGrid* grid = script.grid();
  extras.On("mnuCheckList", [grid, &script] {
    grid->FinishEdit();
    script.check().Begin();
  });
  extras.On("mnuBreakpoint", [grid] { grid->toggleBreakpoint(); });
  extras.On("mnuPlayFromRow", [&script] { script.PlayFromHere(); });
  extras.On("mnuRunToRow", [&script] { script.PlayToHere(); });
  const auto on_rows = [&extras, grid](const char* name, void (script::CommandGrid::*edit)()) {
    extras.On(name, [grid, edit] {
      grid->FinishEdit();
      (grid->*edit)();
    });
  };
  on_rows("mnuDuplicateRow", &script::CommandGrid::duplicateRows);
  on_rows("mnuToggleComment", &script::CommandGrid::toggleComments);
  on_rows("mnuMoveUp", &script::CommandGrid::moveRowsUp);
  on_rows("mnuMoveDown", &script::CommandGrid::moveRowsDown);
}

}  // namespace kolvane::window
