#include "terminal/command_history.h"

#include "base/folding.h"

namespace kolvane::terminal {

HistoryChange CommandHistory::Add(std::string_view command) {
  if (!entries_.empty() && base::EqualsNoCase(entries_.front(), command)) return {};
  entries_.emplace_front(command);
  if (entries_.size() <= kLimit) return {.inserted = true};
  entries_.pop_back();
  return {.inserted = true, .dropped_last = true};
}

}  // namespace kolvane::terminal
