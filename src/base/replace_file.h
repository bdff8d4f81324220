#pragma once

#include <string>
#include <string_view>

namespace kolvane::base {

/// Gives the file `name` the content `bytes`, or leaves it as it was. Returns 0 or an errno. Mode bits are
/// kept, symbolic links followed. What is no regular file is written to directly.
[[nodiscard]] int ReplaceFile(const std::string& name, std::string_view bytes);

/// Makes the file `name` with the content `bytes`, or returns an errno: EEXIST where there is one, even if it
/// was made at the same moment.
[[nodiscard]] int CreateFile(const std::string& name, std::string_view bytes);

}  // namespace kolvane::base
