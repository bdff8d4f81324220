#pragma once

#include <string_view>

namespace kolvane::base {

/// Takes one line off the front of `bytes`, which is not empty, and returns it without its end: CR LF, LF or
/// CR.
std::string_view TakeLine(std::string_view& bytes);

}  // namespace kolvane::base
