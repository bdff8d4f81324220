#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kolvane::app {

/// Whether Esc or Ctrl+C stands in what was typed at a terminal; Esc that begins the code of another key is
/// none.
bool HasGivenUp(std::string_view typed);

/// The common beginning of `candidates`, cut at whole characters; empty for none.
std::string CommonBegin(const std::vector<std::string>& candidates);

/// The lines that a user has entered in `kolvane shell`, in this session and earlier ones, oldest first, in a
/// file with a line each. Sessions side by side add to it one line at a time.
class ShellHistory {
 public:
  static constexpr std::size_t kKept = 1000;  ///< lines of earlier sessions

  /// Reads `file`; empty: nothing is kept. The oldest lines go from the file once it has twice as many as are
  /// kept.
  explicit ShellHistory(std::string file);

  /// $XDG_STATE_HOME/Kolvane/shell-history; empty where the user has no place for it.
  static std::string UserFile();

  /// Not where it is empty or the same as the last one. A file that cannot be written is left alone.
  void Add(std::string_view line);
  const std::vector<std::string>& lines() const { return lines_; }

  /// The lines that begin with `typed`, and the first words that do, newest first, each once.
  std::vector<std::string> Beginning(std::string_view typed) const;

 private:
  std::string file_;
  std::vector<std::string> lines_;
};

}  // namespace kolvane::app
