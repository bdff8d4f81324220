#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "pane/pane.h"
#include "pane/pane_moves.h"
#include "pane/pane_store.h"

namespace kolvane::pane {

/// Where the user put `inserted` bytes at `begin` in place of `removed`.
struct PaneEdit {
  std::size_t begin;
  std::size_t inserted;
  PanePiece removed;
  Color end_color;  ///< of lines to come, before
};

/// What the user has changed in a text, to be taken back from the newest on. Lines that the session puts at
/// the end meanwhile leave the places as they are.
class PaneUndo {
 public:
  /// What is kept of removed text, in bytes: an edit that removes more ends the record.
  static constexpr std::size_t kMostRemoved = 16 * 1024 * 1024;
  static constexpr std::size_t kMostEdits = 1000;

  /// A character typed right after the one of the last call is taken back together with it.
  void Note(PaneEdit edit, bool typed);
  void Forget();
  /// The newest one; null where there is none.
  const PaneEdit* Newest() const { return edits_.empty() ? nullptr : &edits_.back(); }
  PaneEdit Take();

 private:
  bool Continues(const PaneEdit& edit) const;

  std::deque<PaneEdit> edits_;
  std::size_t removed_ = 0;  // bytes in all of them
  bool typing_ = false;      // the newest one consists of typed characters
};

/// The output pane's text with caret, selection and insertion colour; the window shows it. Positions are byte
/// offsets in UTF-8 text in which one LF stands for each line break. Texts come in as UTF-8 in which CR LF, a
/// lone CR and a lone LF all break the line; every other character is kept, NUL and ESC included.
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
  /// Moves the caret; the selection goes, or stretches to the new place if `keep_anchor`.
  void MoveTo(std::size_t offset, bool keep_anchor = false);
  void Select(std::size_t anchor, std::size_t caret);

  /// Where the lines come from that the next AppendLine and AppendText put in; those of the user come from
  /// nowhere.
  void SetOrigin(LineOrigin origin) { origin_ = origin; }

  /// A line break and `line` in `color` at the end, where the caret goes. kNoColor: in the end's colour,
  /// which is the pane's own until SetSelectionColor is called there.
  void AppendLine(std::string_view line, Color color);
  /// `text` in the pane's own colour at the end; the caret goes `back` characters before the new end, a line
  /// break counting as two and a place inside one being the one before it.
  void AppendText(std::string_view text, int back);
  /// Replaces the whole text, caret at its begin.
  void SetText(std::string_view text);

  /// Puts `text` in the insertion colour in place of the selection, the caret after it. This and the next
  /// three are edits of the user's, which Undo takes back.
  void ReplaceSelection(std::string_view text);
  void Erase(PaneRange range);
  void Insert(std::size_t offset, std::string_view text);
  /// Puts `text` on a line of its own in place of the selection, in the comments' colour, which stays the
  /// insertion colour.
  void InsertComment(std::string_view text);

  /// What Undo takes away next; nothing where there is nothing to take back.
  std::optional<PaneRange> Undoable() const;
  /// Takes the newest edit back and puts the caret there.
  void Undo();
  /// Nothing can be taken back from here on.
  void ForgetEdits() { undo_.Forget(); }

  /// The colour of the selection's begin, or the one in which the next insertion at the caret appears.
  Color SelectionColor() const;
  /// Colours the selection, and what is inserted at the caret from now until it moves. At the end of the text
  /// the colour holds for the lines to come, as if the end had it. `color` may carry kBold.
  void SetSelectionColor(Color color);

  /// Lengths in characters as in AppendText, from the selection's begin.
  void MoveBack(int length);
  void SelectForward(int length);

 private:
  void AppendCleaned(std::string_view line, Color color);
  Color ColorBeside(std::size_t offset) const;
  void Exchange(PaneRange range, std::string_view text, Color color);

  PaneStore store_;
  PaneUndo undo_;
  std::size_t caret_ = 0;
  std::size_t anchor_ = 0;
  Color insertion_color_ = kNoColor;
  Color end_color_ = kNoColor;
  LineOrigin origin_;
};

}  // namespace kolvane::pane
