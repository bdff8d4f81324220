#pragma once

#include <string>

namespace kolvane::base {

/// The content of the file `name`. Returns 0 or an errno, with `bytes` empty then. A device or a pipe is
/// never read, which could take for ever: it is empty.
[[nodiscard]] int ReadFile(const std::string& name, std::string& bytes);

}  // namespace kolvane::base
