#include "terminal/flush_input.h"

#include "terminal/texts.h"

namespace kolvane::terminal {

void FlushInput(device::Device& device, Output& output) {
  if (const auto bytes = device.FlushInput()) output.AddLine(LineKind::kNotice, texts::InputFlushed(*bytes));
}

}  // namespace kolvane::terminal
