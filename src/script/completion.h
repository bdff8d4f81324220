#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script/command_list.h"

namespace kolvane::script {

/// How a row that is being typed could go on.
struct Completion {
  std::string row;    ///< the whole row
  std::string shown;  ///< the same with what its argument is, for a list to choose from
  bool operator==(const Completion&) const = default;
};

/// For `typed`, the begin of a row: the $ words, after $GOTO the labels of `list`, after others the words
/// that they take. None where `typed` is complete.
std::vector<Completion> Completions(std::string_view typed, const CommandList& list);

}  // namespace kolvane::script
