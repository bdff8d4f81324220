#pragma once

#include <string>
#include <string_view>

#include "script/command_list.h"

/// What the grid's edit commands do to the rows `first` to `last`. Each call is one step of
/// CommandList::Undo; rows outside the list are skipped.
namespace kolvane::script {

/// For the clipboard: the rows as lines, LF between them.
std::string CopyRows(const CommandList& list, int first, int last);
/// Copies the rows and empties them; the rows after stay where they are.
std::string CutRows(CommandList& list, int first, int last);
void EmptyRows(CommandList& list, int first, int last);

/// Writes the lines of `text` over the rows from `row` on. Returns how many lines that hold text
/// found no row.
int PasteRows(CommandList& list, int row, std::string_view text);

struct PastedRows {
  int last = 0;      ///< the row that the last line went into
  int left_out = 0;  ///< lines that hold text and found no row
};
/// What was typed or pasted into the cell of `row`: its first line replaces the row, each further line
/// becomes a row of its own, and the rows after it move down. During a run no row moves: further lines
/// overwrite.
PastedRows ReplaceRow(CommandList& list, int row, std::string_view text);

/// Moves `row` and all after it down by `count` rows. Returns false, and does nothing, where rows that hold
/// text would leave the list.
bool InsertRows(CommandList& list, int row, int count);
/// Puts the lines of `text` before `row`, whose rows move down. Returns false, and does nothing, where
/// rows that hold text would leave the list.
bool InsertLines(CommandList& list, int row, std::string_view text);
/// Puts a copy of the rows after them; false as above.
bool DuplicateRows(CommandList& list, int first, int last);
/// Moves the rows `by` rows down, up where that is negative; the rows on the way close the gap. False, and
/// nothing is done, where that leaves the list.
bool MoveRows(CommandList& list, int first, int last, int by);
/// Makes comments of the rows that hold text, or, where all of them are comments, takes the marks away.
void ToggleComments(CommandList& list, int first, int last);
/// Moves the rows after `last` up to `first`.
void RemoveRows(CommandList& list, int first, int last);

}  // namespace kolvane::script
