#pragma once

#include <string>
#include <string_view>

namespace kolvane::base {

/// Gives the file `name` the content `bytes`, or leaves it as it was. Returns 0 or an errno. Mode bits are
/// kept, symbolic links followed. What is no regular file is written to directly.
[[nodiscard]] int ReplaceFile(const std::string& name, std::string_view bytes);

}  // namespace kolvane::base
