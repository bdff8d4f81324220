#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace kolvane::base {

/// Reads the file `name`. Returns 0, or an errno with `bytes` empty. A device or pipe, which could block for
/// ever, is not read and counts as empty.
[[nodiscard]] int ReadFile(const std::string& name, std::string& bytes);

/// Receives a piece that was read; false if no more is needed.
using TakePiece = std::function<bool(std::string_view piece)>;
/// Called with 0 before each piece, and about every 50 ms while waiting for one; true ends the reading.
using GiveUp = std::function<bool(int waited_ms)>;

/// Passes the bytes of `name`, which may be a pipe or a device, to `take` as they arrive. Returns 0 or an
/// errno: ETIMEDOUT if `give_up` ended it.
[[nodiscard]] int ReadPieces(const std::string& name, const TakePiece& take, const GiveUp& give_up);

}  // namespace kolvane::base
