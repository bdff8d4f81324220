#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace kolvane::terminal {

/// What CommandHistory::Add did to the list, for whoever shows it.
struct HistoryChange {
  bool inserted = false;      ///< the command became entry 0
  bool dropped_last = false;  ///< the oldest entry made room for it
};

/// The commands sent by hand, newest first.
class CommandHistory {
 public:
  static constexpr std::size_t kLimit = 256;

  /// Puts `command` on top unless the entry there is the same without regard to case.
  HistoryChange Add(std::string_view command);

  const std::deque<std::string>& entries() const { return entries_; }

 private:
  std::deque<std::string> entries_;
};

}  // namespace kolvane::terminal
