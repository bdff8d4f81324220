#pragma once

#include <string>
#include <string_view>

namespace kolvane::inspect {

/// Lays out what is marked in the output pane, bytes as "<41>", as a hex dump. Every character but the
/// brackets counts as a digit, and the last one is never looked at: a part of a line that does not end in
/// front of it is lost. Both texts are Windows-1252. Throws RuntimeError kOverflow beyond 2047 lines.
std::string BuildDump(std::string_view marked);

}  // namespace kolvane::inspect
