#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/files.h"
#include "base/prompt.h"
#include "script/command_list.h"

namespace kolvane::script {

/// Outcome of reading or writing a command file.
struct [[nodiscard]] FileResult {
  enum class Problem {
    kNone,
    kCannotRead,   ///< `error` says why
    kLineTooLong,  ///< not a command file
    kListRunning,  ///< a list is not replaced while it runs
    kCannotWrite   ///< `error` says why; the old file is kept
  };

  Problem problem = Problem::kNone;
  std::string name;  ///< the file, as the user gave it
  int error = 0;     ///< errno

  bool ok() const { return problem == Problem::kNone; }
};

/// Splits a stream of bytes into lines. CR LF, LF and a single CR each end a line; a line end at the very end
/// does not start another line.
class LineSplitter {
 public:
  using Sink = std::function<void(std::string_view line)>;

  explicit LineSplitter(Sink sink) : sink_(std::move(sink)) {}

  void Feed(std::string_view bytes);
  /// Passes on the last line if it has no line end.
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

/// How long a pipe may deliver nothing before reading is given up, if nobody can cancel the wait.
inline constexpr int kQuietMs = 5000;

/// Loads the file `name`, which may be a pipe, into `list`; on failure the list is unchanged. Lines beyond
/// the last row are counted in CommandList::left_out().
FileResult LoadCommandFile(
    CommandList& list, const std::string& name,
    const base::GiveUp& give_up = [](int waited_ms) { return waited_ms >= kQuietMs; });

/// The rows with characters that a command file writes as '?'.
std::vector<int> RowsOutsideCodePage(const CommandList& list);

/// Writes all rows of `list` to the file `name`; on failure the file is unchanged.
FileResult WriteCommandFile(const CommandList& list, const std::string& name);

/// Makes `name` an empty file.
FileResult WriteEmptyFile(const std::string& name);

/// The file dialogs of the command list; no value if the user cancelled. They start in the folder of
/// `current_file`, the list's own file, which may be empty; the save dialog proposes its name.
class CommandFileDialogs {
 public:
  virtual ~CommandFileDialogs() = default;
  virtual std::optional<std::string> AskOpenName(const std::string& current_file) = 0;
  virtual std::optional<std::string> AskSaveName(const std::string& current_file) = 0;
};

/// The file commands of menu and toolbar. A failure is shown by the prompt and changes nothing.
class CommandFileMenu {
 public:
  CommandFileMenu(CommandList& list, CommandFileDialogs& dialogs, base::Prompt& prompt)
      : list_(list), dialogs_(dialogs), prompt_(prompt) {}

  // During a run only Save does anything.

  void New();
  void Open();
  void OpenFile(const std::string& name);
  /// If the list has no name, asks for one, for this save only. Characters that the file cannot hold are
  /// reported first.
  void Save();
  /// Empties the chosen file and adopts its name; the rows are written by the next Save.
  void SaveAs();

 private:
  bool ReportLostCharacters();

  CommandList& list_;
  CommandFileDialogs& dialogs_;
  base::Prompt& prompt_;
};

}  // namespace kolvane::script
