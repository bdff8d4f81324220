#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/prompt.h"
#include "base/read_file.h"
#include "script/command_list.h"

namespace kolvane::script {

/// How reading or writing a command file ended.
struct [[nodiscard]] FileResult {
  enum class Problem {
    kNone,
    kCannotRead,   ///< `error` says why
    kLineTooLong,  ///< the file is no command file
    kListRunning,  ///< a list is not replaced while it runs
    kCannotWrite   ///< `error` says why; the old file is still there
  };

  Problem problem = Problem::kNone;
  std::string name;  ///< the file, as the user gave it
  int error = 0;     ///< errno

  bool ok() const { return problem == Problem::kNone; }
};

/// Cuts a stream of bytes, or a text, into lines. CR LF, LF and a single CR end a line each; a line end at
/// the very end does not begin another line.
class LineSplitter {
 public:
  using Sink = std::function<void(std::string_view line)>;

  explicit LineSplitter(Sink sink) : sink_(std::move(sink)) {}

  void Feed(std::string_view bytes);
  /// Hands over the last line where it has no end.
  void Finish();

  /// Length of the line that has not yet ended.
  std::size_t pending() const { return pending_.size(); }

 private:
  void EndLine(std::string_view tail);

  Sink sink_;
  std::string pending_;
  bool after_cr_ = false;
};

/// Command files, see docs/formats/command-file.md.

inline constexpr std::size_t kLineLimit = 1 << 20;  ///< bytes of one line

/// How long a pipe may bring nothing before it is given up, while nobody can stop the wait.
inline constexpr int kQuietMs = 5000;

/// Shows the file `name`, which may be a pipe, in `list`, which keeps what it held where that fails. Lines
/// beyond the last row are counted in CommandList::left_out().
FileResult LoadCommandFile(
    CommandList& list, const std::string& name,
    const base::GiveUp& give_up = [](int waited_ms) { return waited_ms >= kQuietMs; });

/// The rows with characters that a command file writes as '?'.
std::vector<int> RowsOutsideCodePage(const CommandList& list);

/// Writes all rows of `list` into the file `name`, or leaves the file as it was.
FileResult WriteCommandFile(const CommandList& list, const std::string& name);

/// Makes `name` an empty file.
FileResult WriteEmptyFile(const std::string& name);

/// The file dialogs of the command list; nothing where the user cancelled. They start beside `in_hand`, the
/// list's own file, which may be empty; that for saving proposes its name.
class CommandFileDialogs {
 public:
  virtual ~CommandFileDialogs() = default;
  virtual std::optional<std::string> AskOpenName(const std::string& in_hand) = 0;
  virtual std::optional<std::string> AskSaveName(const std::string& in_hand) = 0;
};

/// The file commands of menu and toolbar. A failure is shown by the prompt and changes nothing.
class CommandFileMenu {
 public:
  CommandFileMenu(CommandList& list, CommandFileDialogs& dialogs, base::Prompt& prompt)
      : list_(list), dialogs_(dialogs), prompt_(prompt) {}

  // Nothing happens while a run is in progress, except that Save saves.

  void New();
  void Open();
  void OpenFile(const std::string& name);
  /// A list without a name asks for one, for this once. Characters that the file cannot hold are reported
  /// first.
  void Save();
  /// Empties the chosen file and takes its name over; the rows follow with the next Save.
  void SaveAs();

 private:
  bool TellWhatTheFileLacks();

  CommandList& list_;
  CommandFileDialogs& dialogs_;
  base::Prompt& prompt_;
};

}  // namespace kolvane::script
