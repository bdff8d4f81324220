#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kolvane::help {

/// The objects of a compiled help file, which is kept in memory. Whatever is wrong with the file, a read
/// gives nothing; neither an exception nor a message comes of it.
class ChmArchive {
 public:
  /// A larger object is taken for a damaged directory and is not read.
  static constexpr std::size_t kMaxObject = std::size_t{32} << 20;

  /// Null where `bytes` is no compiled help file or its directory cannot be read.
  static std::unique_ptr<ChmArchive> Open(std::string bytes);
  ~ChmArchive();
  ChmArchive(const ChmArchive&) = delete;
  ChmArchive& operator=(const ChmArchive&) = delete;

  /// The paths of all objects, each with a '/' in front, in the order of the file's directory.
  const std::vector<std::string>& paths() const;

  /// The bytes of an object, whose path is compared without regard to letter case; empty on any failure.
  std::string Read(std::string_view path) const;
  bool Has(std::string_view path) const;

 private:
  struct Decoder;
  explicit ChmArchive(std::unique_ptr<Decoder> decoder);

  std::unique_ptr<Decoder> decoder_;
};

}  // namespace kolvane::help
