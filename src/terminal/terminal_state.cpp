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

}  // namespace kolvane::terminal
