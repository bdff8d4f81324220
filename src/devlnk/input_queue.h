#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace kolvane::devlnk {

/// How much of the queue one answer takes, and how much of that the caller gets.
struct Answer {
  std::size_t delivered = 0;
  std::size_t consumed = 0;
};

/// What a message ends with, whichever comes first.
struct MessageRule {
  std::size_t most;             ///< bytes, at most InputQueue::kLimit
  std::string_view terminator;  ///< these bytes, which are part of it; empty: none
  bool own_end = true;          ///< the end that the instrument marked itself (USB, GPIB) counts
  std::int32_t gap_ms = -1;     ///< silence for so long once something has come; negative: none
};

/// What has ended a message.
enum class MessageEnd { kMost, kTerminator, kOwnEnd, kGap };

struct Message {
  std::size_t bytes = 0;
  MessageEnd end = MessageEnd::kMost;
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
  /// The instrument's message ends with what has been committed so far.
  void MarkEnd() { ends_.push_back(consumed_ + size()); }
  void Consume(std::size_t count);
  void Clear();

  /// The next answer once it is complete: `count` bytes when `terminator` is 0, else up to that byte, at most
  /// `count`. A terminator is stripped, but an LF that follows a CR is delivered with it. Looks at each byte
  /// once, however often it is asked while an answer grows.
  std::optional<Answer> FindAnswer(std::size_t count, unsigned char terminator);

  /// The next message once it is complete; a gap is the caller's to notice. Looks at each byte once, while
  /// the rule stays.
  std::optional<Message> FindMessage(const MessageRule& rule);

 private:
  void MakeRoom(std::size_t wanted);
  std::optional<Message> FindTerminator(std::string_view terminator, std::size_t held);

  std::unique_ptr<char[]> bytes_;
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::size_t searched_ = 0;  ///< bytes from begin_ that hold no searched_for_
  unsigned char searched_for_ = 0;
  std::uint64_t consumed_ = 0;      ///< bytes since the start
  std::deque<std::uint64_t> ends_;  ///< of messages, counted as consumed_
};

}  // namespace kolvane::devlnk
