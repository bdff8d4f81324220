#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/look.h"
#include "script/script_state.h"

namespace kolvane::script {

using base::Color;

/// How a row's cell is highlighted.
struct Highlight {
  Color back = 0;
  Color fore = 0;
  bool bold = false;
  bool operator==(const Highlight&) const = default;
};

inline constexpr Highlight kRunningRow = {0xFF0000, 0xFFFF, true};  ///< yellow on blue
inline constexpr Highlight kErrorRow = {0xFF, 0xFFFFFF, true};      ///< white on red

namespace syntax_color {
inline constexpr Color kSpecialCommand = 0xFF0000;  ///< the row begins with "$"
inline constexpr Color kComment = 0x008000;         ///< with "'"
inline constexpr Color kColon = 0x0000FF;  ///< with ":"; a label, which ends in ":", has a command's colour
}  // namespace syntax_color

/// The file that a list belongs to.
struct ListFile {
  std::string name;          ///< as the user gave it; empty: none yet
  std::size_t left_out = 0;  ///< lines of the file beyond the last row
  std::string copy = {};     ///< what a list without a name was last saved to
};

/// What an edit or a newly loaded list has replaced.
struct ListStep {
  int first = 1;
  std::vector<std::string> texts;  ///< of the rows from `first` on; if `file` is set, all others are empty
  bool modified = false;
  std::optional<ListFile> file;  ///< set for a whole list
};

/// The last steps that can be undone, or redone; newest on top.
class ListSteps {
 public:
  static constexpr std::size_t kLimit = 100;

  /// Beyond the limit the oldest step is dropped.
  void Push(ListStep step) {
    steps_.push_back(std::move(step));
    if (steps_.size() > kLimit) steps_.pop_front();
  }
  /// There must be at least one step.
  ListStep Pop() {
    ListStep step = std::move(steps_.back());
    steps_.pop_back();
    return step;
  }
  const ListStep* Top() const { return steps_.empty() ? nullptr : &steps_.back(); }
  void Clear() { steps_.clear(); }

  /// The file has changed: every step above the topmost whole-list step becomes modified.
  void MarkModified() {
    for (auto step = steps_.rbegin(); step != steps_.rend() && !step->file; ++step) step->modified = true;
  }

 private:
  std::deque<ListStep> steps_;
};

inline constexpr int kListRows = 1024;

/// Notified of what to show again. During a run the calls come up to millions of times a second, so an
/// observer that paints should only note what has changed.
class CommandListObserver {
 public:
  virtual ~CommandListObserver() = default;
  /// Text or look of the rows `first` to `last`.
  virtual void RowsChanged(int first, int last) = 0;
  virtual void CurrentRowChanged(int row) = 0;
  /// File name, lines left out or modified flag.
  virtual void FileChanged() = 0;
};

/// The command list shown by the grid CommandScript: kListRows rows of UTF-8 text, numbered from 1. A row
/// outside this range has an empty text and no highlight; changing it does nothing.
class CommandList {
 public:
  /// `run` says whether a run is in progress; without it there never is one.
  explicit CommandList(const RunFlags* run = nullptr) : run_(run), rows_(kListRows) {}
  CommandList(const CommandList&) = delete;
  CommandList& operator=(const CommandList&) = delete;

  /// One observer at most; null removes it.
  void Observe(CommandListObserver* observer) { observer_ = observer; }

  const std::string& Text(int row) const { return At(row).text; }
  std::vector<std::string> Texts(int first, int last) const;
  Color TextColor(int row) const { return At(row).color; }
  /// Null for a row that is not highlighted.
  const Highlight* HighlightOf(int row) const { return At(row).highlighted ? &At(row).highlight : nullptr; }

  /// A row is one line: `text` is cut at its first line break. An edit removes the row's highlight unless a
  /// run is in progress. One undo step.
  void SetText(int row, std::string_view text);
  /// As SetText, for the rows from `first` on, in one undo step.
  void SetTexts(int first, const std::vector<std::string>& texts);
  /// Undoes the last edit, or restores the list that New or Open has replaced, with its name. Returns the
  /// first row changed, 0 if there was nothing to undo. During a run the list itself is not replaced.
  int Undo() { return GoTo(done_, undone_); }
  /// Reverts the last Undo; not possible after a further edit.
  int Redo() { return GoTo(undone_, done_); }
  /// The last row whose text is not empty, 0 in an empty list.
  int LastUsedRow() const;

  /// Puts `command` into the row after the last used one, which becomes current (not during a run, whose
  /// position the current row is). Returns false if the list is full.
  bool AddToScript(std::string_view command);
  /// Empties list and file name, in one undo step; returns false and does nothing during a run.
  bool ClearCommandScriptGrid();
  /// Replaces everything with a file's content, at most kListRows `rows`, in one undo step; returns false and
  /// does nothing during a run.
  bool ShowFile(std::string name, std::vector<std::string> rows, std::size_t left_out);

  /// Sets a row's colour according to its kind.
  void SyntaxColorLine(int row);
  /// Removes the highlight and restores the colour.
  void ClearLineSelection(int row);
  void HighlightLine(int row, Color back, Color fore, bool bold);
  /// FONTCOLOR, the colour of rows without a colour of their kind.
  void SetDefaultTextColor(Color color);

  /// 0 before a run's first row, kListRows + 1 past the end; SetCurrentRow clamps to this range.
  int current_row() const { return current_row_; }
  void SetCurrentRow(int row);

  const std::string& file_name() const { return file_.name; }
  /// The file of the list, or what it was last saved to if it has no name.
  const std::string& last_file() const { return file_.name.empty() ? file_.copy : file_.name; }
  std::size_t left_out() const { return file_.left_out; }
  bool modified() const { return modified_; }
  /// Incremented by each change of rows, file name or modified flag.
  std::uint64_t revision() const { return revision_; }
  /// Sets the name of a file that is still empty.
  void SetFileName(std::string name);
  /// The file now holds what the list holds; `copy` is the file of a list without a name.
  void MarkSaved(std::string copy = {});
  /// No file holds what the list holds.
  void MarkModified();

  /// Runs stop before a row with a breakpoint. The breakpoint belongs to the row's number, not to its text.
  bool HasBreakpoint(int row) const { return IsRow(row) && At(row).breakpoint; }
  void ToggleBreakpoint(int row);
  /// The error of the row marked as failed; empty for any other row.
  std::string_view ErrorOf(int row) const;
  void NoteError(int row, std::string_view error);

  bool InUse() const { return run_ != nullptr && run_->ScriptRunning != 0; }

 private:
  struct Row {
    std::string text;
    Color color = 0;
    bool highlighted = false;
    bool breakpoint = false;
    Highlight highlight;
  };

  static bool IsRow(int row) { return row >= 1 && row <= kListRows; }
  const Row& At(int row) const { return IsRow(row) ? rows_[static_cast<std::size_t>(row - 1)] : no_row_; }
  Row& Used(int row) { return rows_[static_cast<std::size_t>(row - 1)]; }
  Color ColorOf(std::string_view text) const;
  void Push(ListStep before);
  int GoTo(ListSteps& from, ListSteps& to);
  ListStep Whole() const;
  void Show(ListFile file, std::vector<std::string> rows, bool modified);
  void Replace(int first, const std::vector<std::string>& texts);
  void Fill(std::vector<std::string> rows);
  void SetModified(bool modified);
  void NotifyRows(int first, int last) {
    if (observer_ != nullptr) observer_->RowsChanged(first, last);
  }
  void NotifyFile() {
    ++revision_;
    if (observer_ != nullptr) observer_->FileChanged();
  }

  const RunFlags* run_;
  CommandListObserver* observer_ = nullptr;
  std::vector<Row> rows_;
  Row no_row_;
  ListSteps done_;
  ListSteps undone_;
  Color default_color_ = 0;
  int current_row_ = 1;
  ListFile file_;
  bool modified_ = false;
  std::uint64_t revision_ = 0;
  int error_row_ = 0;
  std::string error_;
};

}  // namespace kolvane::script
