#pragma once

#include <string>

namespace kolvane::amplifier {

/// Thrown if reading a file was given up.
struct ReadingStopped {};

/// The content of a file, a pipe or a device. Throws std::system_error if it cannot be read, ReadingStopped
/// if `stop` becomes readable meanwhile; negative: none.
std::string ReadWholeFile(const std::string& path, int stop);

}  // namespace kolvane::amplifier
