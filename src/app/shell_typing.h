#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::app {

/// Whether the input typed at a terminal contains Esc or Ctrl+C; an Esc that starts another key's code does
/// not count.
bool HasGivenUp(std::string_view typed);

/// Bytes typed at a terminal and not used yet. Large pastes cost no more per byte than small ones.
class TypeAhead {
 public:
  bool empty() const { return begin_ == bytes_.size(); }
  std::size_t size() const { return bytes_.size() - begin_; }
  void Append(std::string_view bytes);
  /// Removes the first byte and returns it; there must be one.
  char Take();
  /// Whether the user has given up since the last call, with bytes that are still here.
  bool HasGivenUp();
  void Clear();

 private:
  std::string bytes_;
  std::size_t begin_ = 0;     // of the bytes not used yet
  std::size_t searched_ = 0;  // by HasGivenUp
};

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
