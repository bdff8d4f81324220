#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kolvane::base {

/// The content of the file `name`. Returns 0 or an errno, with `bytes` empty then. A device or a pipe is
/// never read, which could take for ever: it is empty.
[[nodiscard]] int ReadFile(const std::string& name, std::string& bytes);

/// Takes what was read; false where it needs no more.
using TakePiece = std::function<bool(std::string_view piece)>;
/// Asked before each piece, with 0, and about every 50 ms while none comes; true ends the reading.
using GiveUp = std::function<bool(int waited_ms)>;

/// Hands the bytes of `name`, which may as well be a pipe or a device, to `take` as they come. Returns 0, or
/// an errno: ETIMEDOUT where `give_up` ended it.
[[nodiscard]] int ReadPieces(const std::string& name, const TakePiece& take, const GiveUp& give_up);

}  // namespace kolvane::base
