#include "terminal/terminal_state.h"

#include <string_view>

namespace kolvane::terminal {

std::vector<std::string> LastAnswer::Fields() const {
  std::vector<std::string> fields;
  std::string_view rest = text;
  for (std::size_t comma; (comma = rest.find(',')) != std::string_view::npos; rest.remove_prefix(comma + 1))
    fields.emplace_back(rest.substr(0, comma));
  fields.emplace_back(rest);
  return fields;
}

void Options::Toggle(int index) {
  switch (index) {
    case 0:
      show_commands = !show_commands;
      break;
    case 1:
      show_response_times = !show_response_times;
      break;
    case 2:
      line_breaks = !line_breaks;
      break;
    default:
      break;
  }
}

}  // namespace kolvane::terminal
