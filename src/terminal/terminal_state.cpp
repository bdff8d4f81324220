#include "terminal/terminal_state.h"

#include "base/text.h"

namespace kolvane::terminal {

std::vector<std::string> LastAnswer::Fields() const {
  std::vector<std::string> fields;
  base::ForEachField(text, [&fields](std::string_view field) {
    fields.emplace_back(field);
    return true;
  });
  return fields;
}

void Options::Set(int index, bool checked) {
  switch (index) {
    case 0:
      show_commands = checked;
      break;
    case 1:
      show_response_times = checked;
      break;
    case 2:
      line_breaks = checked;
      break;
    default:
      break;
  }
}

}  // namespace kolvane::terminal
