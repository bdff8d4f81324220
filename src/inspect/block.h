#pragma once

#include <cstdint>
#include <memory>
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

 private:
  std::string bytes_;
  base::Descriptor file_;
  std::uint64_t size_ = 0;
};

/// Searches for the next occurrence of some bytes: from a position to the end, then from the start.
class BlockSearch {
 public:
  /// `bytes` is at least one.
  BlockSearch(std::shared_ptr<const BlockSource> source, std::string bytes, std::uint64_t from);

  /// Searches the next mebibyte. Returns the share searched so far, 1 at the end.
  double Step();
  /// The offset of the occurrence; no value before the search has ended, and if there is none.
  std::optional<std::uint64_t> found() const { return found_; }

 private:
  std::shared_ptr<const BlockSource> source_;
  std::string bytes_;
  std::uint64_t from_;
  std::uint64_t at_;
  std::uint64_t end_;
  bool from_start_ = false;
  std::optional<std::uint64_t> found_;
};

/// The formats in which bytes are copied.
enum class CopyForm { kHex, kC, kPython, kBase64, kDump, kText };

/// Bytes in such a format, UTF-8; lines end in LF, except the last.
class CopyText {
 public:
  /// The size of each piece but the last.
  static constexpr std::size_t kPieceBytes = 48 * 1024;

  /// `offset` is that of the first byte in the dump, `size` the number of all bytes.
  CopyText(CopyForm form, std::uint64_t offset, std::uint64_t size)
      : form_(form), offset_(offset), size_(size) {}

  void Append(std::string_view piece);
  const std::string& text() const { return text_; }

 private:
  CopyForm form_;
  std::uint64_t offset_;
  std::uint64_t size_;
  std::uint64_t done_ = 0;
  std::string text_;
};

/// The bytes to search for, as typed: text in quotation marks is encoded as Windows-1252, pairs of
/// hexadecimal digits (spaces between them) are bytes, anything else is text. No value if nothing was typed,
/// or for a character not in the code page.
std::optional<std::string> SearchBytes(std::string_view typed);

/// The offset as typed: "17", "&H11" or "0x11", or "+4" and "-4" relative to `at`. No value if it is invalid;
/// it may be outside the block.
std::optional<std::int64_t> TypedOffset(std::string_view typed, std::int64_t at);

}  // namespace kolvane::inspect
