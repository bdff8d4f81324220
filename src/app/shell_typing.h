#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kolvane::app {

/// Whether Esc or Ctrl+C stands in what was typed at a terminal; Esc that begins the code of another key is
/// none.
bool HasGivenUp(std::string_view typed);

/// The common beginning of `candidates`, cut at whole characters; empty for none.
std::string CommonBegin(const std::vector<std::string>& candidates);

}  // namespace kolvane::app
