#pragma once

#include <string>
#include <string_view>

#include "script/command_list.h"

/// The grid's edit commands, for the rows `first` to `last`. Each call is one step of CommandList::Undo; rows
/// outside the list are skipped.
namespace kolvane::script {

/// For the clipboard: the rows as lines, separated by LF. An empty last row ends in LF, too.
std::string CopyRows(const CommandList& list, int first, int last);
/// Copies the rows and empties them; the rows after them do not move.
std::string CutRows(CommandList& list, int first, int last);
void EmptyRows(CommandList& list, int first, int last);

/// Writes the lines of `text` over the rows from `row` on. Returns how many lines that hold text did not fit.
int PasteRows(CommandList& list, int row, std::string_view text);

struct PastedRows {
  int last = 0;      ///< the row of the last line
  int left_out = 0;  ///< lines that hold text and did not fit
};
/// Applies the text typed or pasted into the cell of `row`: its first line replaces the row, each further
/// line is inserted as a new row, and the rows after it move down. During a run no row moves: further lines
/// overwrite.
PastedRows ReplaceRow(CommandList& list, int row, std::string_view text);

/// Moves `row` and all after it down by `count` rows. Returns false and does nothing if rows that hold text
/// would leave the list.
bool InsertRows(CommandList& list, int row, int count);
/// Inserts the lines of `text` before `row`; it and the rows after it move down. Returns false and does
/// nothing if rows that hold text would leave the list.
bool InsertLines(CommandList& list, int row, std::string_view text);
/// Inserts a copy of the rows after them; returns false as above.
bool DuplicateRows(CommandList& list, int first, int last);
/// Moves the rows down by `by` rows, up if negative; the rows in between close the gap. Returns false and
/// does nothing if rows would leave the list.
bool MoveRows(CommandList& list, int first, int last, int by);
/// Turns the rows that hold text into comments, or back if all of them are comments.
void ToggleComments(CommandList& list, int first, int last);
/// Removes the rows; those after `last` move up.
void RemoveRows(CommandList& list, int first, int last);

}  // namespace kolvane::script
