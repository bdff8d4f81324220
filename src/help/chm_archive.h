#pragma once

#include <mspack.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// The 32-bit number at `offset`, low byte first; all four bytes must be within `bytes`.
inline std::uint32_t NumberAt(std::string_view bytes, std::size_t offset) {
  std::uint32_t number = 0;
  for (std::size_t i = 4; i-- > 0;) number = number << 8 | static_cast<unsigned char>(bytes[offset + i]);
  return number;
}

/// Corrects header values of a help file that its compiler writes contrary to the format, and that the
/// decoder would reject. The caller has checked that it is a help file.
void RepairHeaders(std::string& bytes);

/// What the decoder reads from and writes to: the help file's bytes and one output, both in memory. The empty
/// name is the output, every other name the help file.
struct ChmMemory {
  ChmMemory();
  ChmMemory(const ChmMemory&) = delete;
  ChmMemory& operator=(const ChmMemory&) = delete;

  mspack_system system;  ///< must stay the first member: the decoder passes back only its address
  std::string input;
  std::string output;
  std::size_t output_limit = 0;  ///< a write beyond it fails
};

/// The objects of a compiled help file, which is kept in memory. Whatever is wrong with the file, a read
/// returns nothing; there is neither an exception nor a message.
class ChmArchive {
 public:
  /// A larger object is a sign of a damaged directory and is not read.
  static constexpr std::size_t kMaxObject = std::size_t{32} << 20;

  /// Null if `bytes` is not a compiled help file or its directory cannot be read.
  static std::unique_ptr<ChmArchive> Open(std::string bytes);
  ~ChmArchive();
  ChmArchive(const ChmArchive&) = delete;
  ChmArchive& operator=(const ChmArchive&) = delete;

  /// The paths of all objects, each with a leading '/', in the order of the file's directory.
  const std::vector<std::string>& paths() const;

  /// The bytes of an object, whose path may be in any case; empty on any failure.
  std::string Read(std::string_view path) const;
  bool Has(std::string_view path) const;

 private:
  struct Decoder;
  explicit ChmArchive(std::unique_ptr<Decoder> decoder);

  std::unique_ptr<Decoder> decoder_;
};

}  // namespace kolvane::help
