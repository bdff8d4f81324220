#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script/checker/checker.h"
#include "script/checker/list_flow.h"
#include "script/checker/row_words.h"

namespace kolvane::script::checker {

/// What a row does. For an unknown command: what it was probably meant to do.
struct RowMeaning {
  FlowStep step;      ///< without the target of a jump
  std::string label;  ///< FlowOp::kGoTo: the argument
};

/// The row's effect on the course of a run; kPass for an unknown command.
FlowOp FlowOpOf(const RowParts& parts);

/// Reports what is wrong with row number `row` by itself. An error means that every execution of the row
/// fails. Labels are not looked up.
RowMeaning CheckRow(int row, const RowParts& parts, std::vector<Finding>& findings);

/// Reports characters that a command file cannot hold, and rows of a file in another encoding. `text` is the
/// whole row, including the spaces around it.
void CheckCharacters(int row, std::string_view text, std::vector<Finding>& findings);

}  // namespace kolvane::script::checker
