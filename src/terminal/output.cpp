#include "terminal/output.h"

namespace kolvane::terminal {

void Output::AddLine(std::string_view line, Color color) {
  if (flags_.SilentMode) return;
  pane_.AppendLine(line, color);
  if (flags_.log_recording) log_.WriteLine(line);
  pane_.Refresh();
}

}  // namespace kolvane::terminal
