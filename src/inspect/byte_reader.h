#pragma once

#include <array>
#include <cstdint>

#include "inspect/dump_view.h"

namespace kolvane::inspect {

using ByteBuffer = std::array<std::uint8_t, 257>;

/// Reads bytes from the caret on into the buffer and selects them in the dump. Reading stops `kTextEnd`
/// positions before the text's end: the rest of the buffer keeps what an earlier read left. With a count
/// below 1 it goes on to that end. False where the buffer was full before: the caret then stays behind the
/// last byte, and nothing is selected.
[[nodiscard]] bool BuildByteBuf(std::int32_t total_bytes, DumpView& view, ByteBuffer& buffer);

inline constexpr Position kTextEnd = 22;

}  // namespace kolvane::inspect
