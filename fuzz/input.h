#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kolvane::fuzz {

/// The bytes of one run, taken from the front; past the end it returns zeros and empty texts.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : Input({reinterpret_cast<const char*>(data), size}) {}
  explicit Input(std::string_view bytes) : rest_(bytes) {}

  bool empty() const { return rest_.empty(); }
  std::string_view Rest() const { return rest_; }

  std::uint8_t Byte() {
    if (rest_.empty()) return 0;
    const auto byte = static_cast<std::uint8_t>(rest_.front());
    rest_.remove_prefix(1);
    return byte;
  }

  /// `size` bytes, fewer at the end.
  std::string_view Take(std::size_t size) {
    const std::string_view taken = rest_.substr(0, size);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  /// The text before the next `end`, which is removed as well.
  std::string_view Until(char end) {
    const std::string_view taken = Take(rest_.find(end));
    Byte();
    return taken;
  }

 private:
  std::string_view rest_;
};

/// A number that decides whether a run takes a costly step; the same for the same bytes.
inline std::uint32_t Hash(std::string_view bytes) {
  std::uint32_t hash = 2166136261u;
  for (const char c : bytes) hash = (hash ^ static_cast<std::uint8_t>(c)) * 16777619u;
  return hash >> 8;
}

}  // namespace kolvane::fuzz
