#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "script/checker/block_check.h"
#include "script/checker/checker.h"
#include "script/checker/list_flow.h"
#include "script/checker/row_words.h"

namespace kolvane::script::checker {

/// The rows of a list that $GOTO can find: those that end in ":". Rows are numbered from 1.
class LabelTable {
 public:
  /// `rows` must outlive this object.
  explicit LabelTable(const std::vector<std::string_view>& rows);

  /// The row that $GOTO finds for `target`, a label and its ":"; 0 for none.
  int Find(std::string_view target) const;
  /// The next row with the text of `row`, which must be a label; 0 for none.
  int NextDuplicate(int row) const;
  /// The first row that equals `target` apart from spaces.
  int FindWithSpaces(std::string_view target) const;
  /// The first row that is probably a misspelled `target`.
  int FindSimilar(std::string_view target) const;

  std::string_view Text(int row) const { return rows_[static_cast<std::size_t>(row - 1)]; }

 private:
  using Rows = std::unordered_map<std::string, std::vector<int>>;  // by folded text

  static int FindIn(const Rows& rows, const std::string& folded);

  const std::vector<std::string_view>& rows_;
  Rows exact_;
  Rows without_spaces_;
  std::vector<std::pair<int, std::string>> folded_;
};

/// The row that a jump to `label` goes to, or the one probably meant; 0 for none. Reports a $GOTO in `parts`,
/// row number `row`, that finds none.
int FindTarget(int row, const RowParts& parts, std::string_view label, const LabelTable& labels,
               std::vector<Finding>& findings);

/// Reports labels that no jump finds because an earlier row has the same text.
void CheckDuplicates(const std::vector<FlowStep>& steps, const LabelTable& labels,
                     std::vector<Finding>& findings);

/// Reports jumps into a loop that is not open.
void CheckJumpsIntoLoops(const CheckedList& list, std::vector<Finding>& findings);

}  // namespace kolvane::script::checker
