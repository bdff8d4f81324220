#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/descriptor.h"

namespace kolvane::inspect {

/// The bytes that the inspector shows a page of: a block in memory, or a file of any size.
class BlockSource {
 public:
  void SetBytes(std::string bytes);
  /// Returns 0 or an errno, with the bytes as they were then. Only regular files are taken.
  [[nodiscard]] int Open(const std::string& file);

  std::uint64_t size() const { return size_; }
  /// As many of `count` bytes from `offset` on as there are, and can be read.
  std::string Read(std::uint64_t offset, std::size_t count) const;
  /// Where `bytes`, at least one, stand next: from `from` on to the end, then from the beginning.
  std::optional<std::uint64_t> Find(std::string_view bytes, std::uint64_t from) const;

 private:
  std::optional<std::uint64_t> FindBetween(std::string_view bytes, std::uint64_t from,
                                           std::uint64_t end) const;

  std::string bytes_;
  base::Descriptor file_;
  std::uint64_t size_ = 0;
};

}  // namespace kolvane::inspect
