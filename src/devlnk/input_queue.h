#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace kolvane::devlnk {

/// The part of the queue that one answer uses, and how much of it the caller gets.
struct Answer {
  std::size_t delivered = 0;
  std::size_t consumed = 0;
};

/// What ends a message, whichever comes first.
struct MessageRule {
  std::size_t max_bytes;        ///< bytes, at most InputQueue::kLimit
  std::string_view terminator;  ///< ends the message and is part of it; empty: none
  bool own_end = true;          ///< the end marked by the instrument (USB, GPIB) counts
  std::int32_t gap_ms = -1;     ///< silence of this length after the first byte; negative: none
};

/// What ended a message.
enum class MessageEnd { kFull, kTerminator, kOwnEnd, kGap };

struct Message {
  std::size_t bytes = 0;
  MessageEnd end = MessageEnd::kFull;
};

/// Received, unread bytes, and the rules that divide them into answers.
class InputQueue {
 public:
  static constexpr std::size_t kLimit = std::size_t{16} << 20;  ///< bytes; more stay in the system
  static constexpr std::size_t kChunk = std::size_t{64} << 10;  ///< bytes, room of one receive call

  std::size_t size() const { return end_ - begin_; }
  const char* data() const { return bytes_.get() + begin_; }

  /// Room for the next bytes: kChunk, less near kLimit, none at kLimit.
  std::span<char> Room();
  /// To be called when the first `count` bytes of the last Room() have been filled.
  void Commit(std::size_t count) { end_ += count; }
  /// Records that the instrument's message ends with the bytes committed so far.
  void MarkEnd() { ends_.push_back(consumed_ + size()); }
  void Consume(std::size_t count);
  void Clear();

  /// The next answer once it is complete: `count` bytes if `terminator` is 0, otherwise up to that byte, at
  /// most `count`. A terminator is stripped, but an LF after a CR is delivered with it. Examines each byte
  /// only once, however often it is called while an answer grows.
  std::optional<Answer> FindAnswer(std::size_t count, unsigned char terminator);

  /// The next message once it is complete; the caller detects gaps. Examines each byte once as long as the
  /// rule stays the same.
  std::optional<Message> FindMessage(const MessageRule& rule);

 private:
  void MakeRoom(std::size_t wanted);
  std::optional<Message> FindTerminator(std::string_view terminator, std::size_t held);

  std::unique_ptr<char[]> bytes_;
  std::size_t capacity_ = 0;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  std::size_t searched_ = 0;  ///< bytes from begin_ without searched_for_
  unsigned char searched_for_ = 0;
  std::uint64_t consumed_ = 0;      ///< total bytes consumed
  std::deque<std::uint64_t> ends_;  ///< ends of messages, in total bytes
};

}  // namespace kolvane::devlnk
