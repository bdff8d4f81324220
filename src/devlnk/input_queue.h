#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>

namespace kolvane::devlnk {

/// How much of the queue one answer takes, and how much of that the caller gets.
struct Answer {
  std::size_t delivered = 0;
  std::size_t consumed = 0;
};

/// The bytes received and not yet read, and the rules by which they make up answers.
class InputQueue {
 public:
  static constexpr std::size_t kLimit = std::size_t{16} << 20;  ///< bytes; more are left to the system
  static constexpr std::size_t kChunk = std::size_t{64} << 10;  ///< bytes offered for one receive call

  std::size_t size() const { return end_ - begin_; }
  const char* data() const { return bytes_.get() + begin_; }

  /// Where the next bytes may be put: kChunk of them, fewer near kLimit, none at kLimit.
  std::span<char> Room();
  /// The first `count` bytes of the last Room() have been filled.
  void Commit(std::size_t count) { end_ += count; }
  void Consume(std::size_t count);
  void Clear() { Consume(size()); }

  /// The next answer once it is complete: `count` bytes when `terminator` is 0, else up to that byte, at most
  /// `count`. A terminator is stripped, but an LF that follows a CR is delivered with it. Looks at each byte
  /// once, however often it is asked while an answer grows.
  std::optional<Answer> FindAnswer(std::size_t count, unsigned char terminator);

 private:
  void MakeRoom(std::size_t wanted);

  std::unique_ptr<char[]> bytes_;
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::size_t searched_ = 0;  ///< bytes from begin_ that hold no searched_for_
  unsigned char searched_for_ = 0;
};

}  // namespace kolvane::devlnk
