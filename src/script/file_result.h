#pragma once

#include <string>

namespace kolvane::script {

/// How reading or writing a command file ended.
struct [[nodiscard]] FileResult {
  enum class Problem {
    kNone,
    kCannotRead,   ///< `error` says why
    kLineTooLong,  ///< the file is no command file
    kListRunning,  ///< a list is not replaced while it runs
    kCannotWrite   ///< `error` says why; the old file is still there
  };

  Problem problem = Problem::kNone;
  std::string name;  ///< the file, as the user gave it
  int error = 0;     ///< errno

  bool ok() const { return problem == Problem::kNone; }
};

}  // namespace kolvane::script
