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

/// The formats in which bytes are copied.
enum class CopyForm { kHex, kC, kPython, kBase64, kDump, kText };

/// The bytes in that format, UTF-8; lines end in LF, except the last. `offset` is that of the first byte in
/// the dump.
std::string CopyText(CopyForm form, std::string_view bytes, std::size_t offset);

/// The bytes to search for, as typed: text in quotation marks is encoded as Windows-1252, pairs of
/// hexadecimal digits (spaces between them) are bytes, anything else is text. No value if nothing was typed,
/// or for a character not in the code page.
std::optional<std::string> SearchBytes(std::string_view typed);

/// The offset as typed: "17", "&H11" or "0x11", or "+4" and "-4" relative to `at`. No value if it is invalid;
/// it may be outside the block.
std::optional<std::int64_t> TypedOffset(std::string_view typed, std::int64_t at);

}  // namespace kolvane::inspect
