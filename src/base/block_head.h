#pragma once

#include <cstddef>

#include "base/text.h"

namespace kolvane::base {

/// The longest block that is read, without its head, and the message for a longer one.
inline constexpr std::size_t kBlockLimit = std::size_t{64} << 20;
inline constexpr const char* kBlockTooLong = "Block länger als 64 MiB";

/// Parses the head of an IEEE 488.2 block byte by byte: "#", a digit with the number of digits that follow,
/// and these digits, the number of bytes in the block. "#0" is the whole head of a block of unknown length.
class BlockHead {
 public:
  /// Takes the next byte; false, and nothing changed, if it cannot be part of a head.
  [[nodiscard]] bool Take(char byte) {
    if (bytes_ == 0 ? byte != '#' : !IsDigit(byte)) return false;
    const auto value = static_cast<std::size_t>(byte - '0');
    if (bytes_ == 1) digits_ = value;
    if (bytes_ > 1) length_ = 10 * length_ + value;
    ++bytes_;
    return true;
  }

  bool IsWhole() const { return bytes_ == 2 + digits_; }
  /// For a whole head: whether it has a byte count, and that count.
  bool IsCounted() const { return digits_ > 0; }
  std::size_t length() const { return length_; }
  /// The number of head bytes taken.
  std::size_t bytes() const { return bytes_; }

 private:
  std::size_t bytes_ = 0;
  std::size_t digits_ = 0;
  std::size_t length_ = 0;
};

}  // namespace kolvane::base
