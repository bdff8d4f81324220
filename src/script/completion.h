#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "script/command_list.h"

namespace kolvane::script {

/// A possible continuation of a row being typed.
struct Completion {
  std::string row;    ///< the whole row
  std::string shown;  ///< the same followed by its argument's name, for display
  bool operator==(const Completion&) const = default;
};

/// Completes `typed`, the start of a row: with the $ words, after $GOTO the labels of `list`, after others
/// the words that they take. Empty if `typed` is complete.
std::vector<Completion> Completions(std::string_view typed, const CommandList& list);

}  // namespace kolvane::script
