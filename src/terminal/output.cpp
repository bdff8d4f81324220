#include "terminal/output.h"

#include "terminal/texts.h"

namespace kolvane::terminal {

[[gnu::hot]] void Output::AddLine(LineKind kind, std::string_view line) {
  if (flags_.SilentMode) return;
  pane_.AppendLine(kind, line);
  if (flags_.log_recording) log_.WriteLine(line);
  pane_.Refresh();
}

void FlushInput(device::Device& device, Output& output) {
  const auto bytes = device.FlushInput();
  if (!bytes) return;
  output.AddLine(LineKind::kNotice, texts::InputFlushed(*bytes));
  output.ShowState(StateKind::kBytes, {});
}

}  // namespace kolvane::terminal
