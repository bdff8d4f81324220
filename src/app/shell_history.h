#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kolvane::app {

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
