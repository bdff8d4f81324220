#pragma once

#include <cstdint>
#include <string_view>

namespace kolvane::device {

inline constexpr std::int16_t kWriteCrLf = 2;
inline constexpr std::int16_t kWriteNothing = -1;
inline constexpr std::int16_t kReadWithoutTerminator = 0;

/// How a host ends a command: 2 for CR LF, the Windows-1252 code of a single character, -1 for nothing. A
/// text that no code stands for is -1 as well: whoever writes appends it to the command.
std::int16_t WriteTerminatorCode(std::string_view terminator);

/// What ends an answer: the Windows-1252 code of the terminator's last character (10 for CR LF), 0 for none.
std::int16_t ReadTerminatorCode(std::string_view terminator);

}  // namespace kolvane::device
