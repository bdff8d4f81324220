#pragma once

#include <cstddef>

namespace kolvane::base {

/// The longest block that is read, its head not counted, and what is said of a longer one.
inline constexpr std::size_t kBlockLimit = std::size_t{64} << 20;
inline constexpr const char* kBlockTooLong = "Block länger als 64 MiB";

/// The head of a block of IEEE 488.2, byte by byte: "#", a digit that says how many digits follow, and these
/// digits as the number of the block's bytes; "#0" is the whole head of a block that says nothing of its
/// length.
class BlockHead {
 public:
  /// The next byte; false where it is none of a head, which it then leaves as it was.
  [[nodiscard]] bool Take(char byte) {
    const bool digit = byte >= '0' && byte <= '9';
    if (bytes_ == 0 ? byte != '#' : !digit) return false;
    const auto value = static_cast<std::size_t>(byte - '0');
    if (bytes_ == 1) digits_ = value;
    if (bytes_ > 1) length_ = 10 * length_ + value;
    ++bytes_;
    return true;
  }

  bool IsWhole() const { return bytes_ == 2 + digits_; }
  /// Of a whole head: whether it says how many bytes follow, and how many.
  bool IsCounted() const { return digits_ > 0; }
  std::size_t length() const { return length_; }
  /// How many bytes of it have been taken.
  std::size_t bytes() const { return bytes_; }

 private:
  std::size_t bytes_ = 0;
  std::size_t digits_ = 0;
  std::size_t length_ = 0;
};

}  // namespace kolvane::base
