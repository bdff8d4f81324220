#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "pane/pane.h"
#include "pane/pane_store.h"

namespace kolvane::pane {

/// The user replaced `removed` at `begin` by `inserted` bytes.
struct PaneEdit {
  std::size_t begin;
  std::size_t inserted;
  PanePiece removed;
  Color end_color;  ///< of new lines, before the edit
};

/// The user's edits of a text, undone from the newest on. Lines that the session appends in between do not
/// move their positions.
class PaneUndo {
 public:
  /// Limit of the removed text that is kept, in bytes: an edit that removes more clears the record.
  static constexpr std::size_t kMaxRemoved = 16 * 1024 * 1024;
  static constexpr std::size_t kMaxEdits = 1000;

  /// A character typed right after that of the previous call is undone together with it.
  void Note(PaneEdit edit, bool typed);
  void Forget();
  /// The newest edit; null if there is none.
  const PaneEdit* Newest() const { return edits_.empty() ? nullptr : &edits_.back(); }
  PaneEdit Take();

 private:
  bool Continues(const PaneEdit& edit) const;

  std::deque<PaneEdit> edits_;
  std::size_t removed_ = 0;  // bytes in all of them
  bool typing_ = false;      // the newest one consists of typed characters
};

/// The output pane's text with caret, selection and insertion colour; the window shows it. Positions are byte
/// offsets in UTF-8 text in which one LF stands for each line break. Input is UTF-8 in which CR LF, a lone CR
/// and a lone LF each break the line; every other character is kept, NUL and ESC included.
class PaneText {
 public:
  const PaneStore& store() const { return store_; }
  std::size_t Length() const { return store_.Length(); }
  /// The whole text with `line_break` for each break: "\r\n" in files.
  std::string Text(std::string_view line_break) const { return store_.Text(0, Length(), line_break); }

  std::size_t caret() const { return caret_; }
  std::size_t anchor() const { return anchor_; }
  PaneRange Selection() const;
  std::string SelectedText(std::string_view line_break) const;
  /// Moves the caret; the selection is removed, or extended to the new position if `keep_anchor`.
  void MoveTo(std::size_t offset, bool keep_anchor = false);
  void Select(std::size_t anchor, std::size_t caret);
  /// Selects again what was selected before lines were appended, for copying and deleting. Text inserted next
  /// must not replace it, see LeaveReselected.
  void Reselect(std::size_t anchor, std::size_t caret);
  /// If the selection is from Reselect, it ends and the caret is where the lines left it.
  void LeaveReselected();

  /// The origin of the lines that AppendLine and AppendText insert from now on; the user's lines have none.
  void SetOrigin(LineOrigin origin) { origin_ = origin; }

  /// Appends a line break and `line` in `color`; the caret goes to the end. kNoColor: the end's colour, which
  /// is the pane's own until SetSelectionColor is called there.
  void AppendLine(std::string_view line, Color color);
  /// Appends `text` in the pane's own colour; the caret goes `back` characters before the new end, a line
  /// break counting as two; inside a break the position before it counts.
  void AppendText(std::string_view text, int back);
  /// Replaces the whole text; the caret goes to its start.
  void SetText(std::string_view text);

  /// Replaces the selection by `text` in the insertion colour; the caret goes after it. This and the next
  /// three are the user's edits, which Undo reverts.
  void ReplaceSelection(std::string_view text);
  void Erase(PaneRange range);
  void Insert(std::size_t offset, std::string_view text);
  /// Replaces the selection by `text` on a separate line in the comment colour, which stays the insertion
  /// colour.
  void InsertComment(std::string_view text);

  /// The range that the next Undo removes; no value if there is nothing to undo.
  std::optional<PaneRange> Undoable() const;
  /// Undoes the newest edit and moves the caret there.
  void Undo();
  /// No edit made so far can be undone.
  void ForgetEdits() { undo_.Forget(); }

  /// The colour at the selection's start, or that of the next insertion at the caret.
  Color SelectionColor() const;
  /// Colours the selection, and text inserted at the caret until it moves. At the end of the text the colour
  /// also applies to lines appended later. `color` may carry kBold.
  void SetSelectionColor(Color color);

  /// Lengths are in characters as in AppendText, from the selection's start.
  void MoveBack(int length);
  void SelectForward(int length);

 private:
  void PutCaret(std::size_t offset);
  void AppendCleaned(std::string_view line, Color color);
  Color ColorBeside(std::size_t offset) const;
  void Exchange(PaneRange range, std::string_view text, Color color);

  PaneStore store_;
  PaneUndo undo_;
  std::size_t caret_ = 0;
  std::size_t anchor_ = 0;
  std::optional<std::size_t> left_caret_;  // where appended lines left the caret before Reselect
  Color insertion_color_ = kNoColor;
  Color end_color_ = kNoColor;
  LineOrigin origin_;
};

}  // namespace kolvane::pane
