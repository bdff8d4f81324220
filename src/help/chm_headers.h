#pragma once

#include <string>

namespace kolvane::help {

/// Mends in the bytes of a help file what the compiler of the help pages writes otherwise than the format
/// wants it and the decoder minds. Bytes that are no help file stay as they are.
void MendHeaders(std::string& bytes);

}  // namespace kolvane::help
