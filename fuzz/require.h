#pragma once

#include <cstdio>
#include <cstdlib>

namespace kolvane::fuzz {

/// Makes the current run a finding if `holds` is false.
inline void Require(bool holds, const char* file = __builtin_FILE(), int line = __builtin_LINE()) {
  if (holds) return;
  std::fprintf(stderr, "%s:%d: invariant violated\n", file, line);
  std::abort();
}

}  // namespace kolvane::fuzz
