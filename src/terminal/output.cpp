#include "terminal/output.h"

namespace kolvane::terminal {

void Output::AddLine(LineKind kind, std::string_view line) {
  if (flags_.SilentMode) return;
  pane_.AppendLine(kind, line);
  if (flags_.log_recording) log_.WriteLine(line);
  pane_.Refresh();
}

}  // namespace kolvane::terminal
