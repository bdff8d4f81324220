#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kolvane::app {

/// Whether the input typed at a terminal contains Esc or Ctrl+C; an Esc that starts another key's code does
/// not count.
bool HasGivenUp(std::string_view typed);

/// The common start of `candidates`, cut at whole characters; empty if there is none.
std::string CommonPrefix(const std::vector<std::string>& candidates);

/// The lines entered in `kolvane shell`, in this session and earlier ones, oldest first, in a file with one
/// entry per line. Concurrent sessions each append their lines one at a time.
class ShellHistory {
 public:
  static constexpr std::size_t kKept = 1000;  ///< lines of earlier sessions

  /// Reads `file`; if empty, nothing is stored. The oldest lines are removed from the file once it has twice
  /// kKept lines.
  explicit ShellHistory(std::string file);

  /// $XDG_STATE_HOME/Kolvane/shell-history; empty if there is no state folder for the user.
  static std::string UserFile();

  /// Ignores an empty line and a repetition of the last one. A failure to write the file is ignored.
  void Add(std::string_view line);
  const std::vector<std::string>& lines() const { return lines_; }

  /// The lines that start with `typed`, and the first words that do, newest first, without duplicates.
  std::vector<std::string> StartingWith(std::string_view typed) const;

 private:
  std::string file_;
  std::vector<std::string> lines_;
};

}  // namespace kolvane::app
