#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::inspect {

/// The bytes that the inspector shows in pages: a block in memory, or a file of any size.
class BlockSource {
 public:
  void SetBytes(std::string bytes);
  /// Returns 0 or an errno; then the bytes are unchanged. Only regular files are accepted.
  [[nodiscard]] int Open(const std::string& file);

  std::uint64_t size() const { return size_; }
  /// Up to `count` bytes from `offset` on, as many as exist and can be read.
  std::string Read(std::uint64_t offset, std::size_t count) const;
  /// Where `bytes`, at least one, occur next: from `from` to the end, then from the beginning.
  std::optional<std::uint64_t> Find(std::string_view bytes, std::uint64_t from) const;

 private:
  std::optional<std::uint64_t> FindBetween(std::string_view bytes, std::uint64_t from,
                                           std::uint64_t end) const;

  std::string bytes_;
  base::Descriptor file_;
  std::uint64_t size_ = 0;
};

}  // namespace kolvane::inspect
