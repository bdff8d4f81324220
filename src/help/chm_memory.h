#pragma once

#include <mspack.h>

#include <cstddef>
#include <string>

namespace kolvane::help {

/// What the decoder reads from and writes to: the help file's bytes and one output, both in memory. The name
/// of the output is the empty text, every other name is the help file.
struct ChmMemory {
  ChmMemory();
  ChmMemory(const ChmMemory&) = delete;
  ChmMemory& operator=(const ChmMemory&) = delete;

  mspack_system system;  ///< stays the first member, as the decoder hands back this address alone
  std::string input;
  std::string output;
  std::size_t output_limit = 0;  ///< a write beyond it fails
};

}  // namespace kolvane::help
