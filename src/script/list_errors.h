#pragma once

#include <string_view>

#include "base/prompt.h"
#include "script/command_list.h"

namespace kolvane::script {

/// How an error in a command list comes to the user's notice and ends the run.
class ListErrors {
 public:
  ListErrors(CommandList& list, base::Prompt& prompt) : list_(list), prompt_(prompt) {}

  /// Shows `error` with the number of the current row, marks that row and makes the last row current.
  void Report(std::string_view error);

 private:
  CommandList& list_;
  base::Prompt& prompt_;
};

}  // namespace kolvane::script
