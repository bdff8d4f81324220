#include "devlnk/input_queue.h"

#include <algorithm>
#include <cstring>

namespace kolvane::devlnk {

[[gnu::hot]] std::span<char> InputQueue::Room() {
  const std::size_t wanted = std::min(kChunk, kLimit - size());
  if (capacity_ - end_ < wanted) MakeRoom(wanted);
  return {bytes_.get() + end_, wanted};
}

void InputQueue::MakeRoom(std::size_t wanted) {
  const std::size_t held = size();
  // Move only if at least as much has been read as has to be moved; otherwise double the space.
  if (begin_ >= held && capacity_ - held >= wanted) {
    std::memmove(bytes_.get(), data(), held);
  } else {
    const std::size_t larger = std::max(2 * capacity_, held + wanted);
    auto bytes = std::make_unique_for_overwrite<char[]>(larger);
    if (held > 0) std::memcpy(bytes.get(), data(), held);
    bytes_ = std::move(bytes);
    capacity_ = larger;
  }
  begin_ = 0;
  end_ = held;
}

[[gnu::hot]] void InputQueue::Consume(std::size_t count) {
  begin_ += count;
  consumed_ += count;
  while (!ends_.empty() && ends_.front() <= consumed_) ends_.pop_front();
  searched_ -= std::min(searched_, count);
  if (begin_ == end_) begin_ = end_ = 0;
}

void InputQueue::Clear() {
  Consume(size());
  ends_.clear();
}

[[gnu::hot]] std::optional<Answer> InputQueue::FindAnswer(std::size_t count, unsigned char terminator) {
  const std::size_t held = std::min(size(), count);
  if (held == 0 && count > 0) return std::nullopt;
  if (terminator != searched_for_) {
    searched_for_ = terminator;
    searched_ = 0;
  }
  if (terminator != 0 && searched_ < held) {
    const void* hit = std::memchr(data() + searched_, terminator, held - searched_);
    if (hit != nullptr) {
      const auto at = static_cast<std::size_t>(static_cast<const char*>(hit) - data());
      const bool pair = terminator == '\n' && at > 0 && data()[at - 1] == '\r';
      return Answer{pair ? at + 1 : at, at + 1};
    }
    searched_ = held;
  }
  if (held == count) return Answer{count, count};
  return std::nullopt;
}

// The search position is kept for single bytes only.
std::optional<Message> InputQueue::FindTerminator(std::string_view terminator, std::size_t held) {
  const bool single = terminator.size() == 1;
  const auto byte = static_cast<unsigned char>(terminator.back());
  const std::size_t from = single && byte == searched_for_ ? searched_ : 0;
  const std::size_t at = std::string_view(data(), held).find(terminator, from);
  if (at != std::string_view::npos) return Message{at + terminator.size(), MessageEnd::kTerminator};
  if (single && byte != 0) {
    searched_for_ = byte;
    searched_ = std::max(from, held);
  }
  return std::nullopt;
}

std::optional<Message> InputQueue::FindMessage(const MessageRule& rule) {
  const bool ended = rule.own_end && !ends_.empty();
  const std::size_t whole = ended ? static_cast<std::size_t>(ends_.front() - consumed_) : size();
  const std::size_t held = std::min(whole, rule.max_bytes);
  if (!rule.terminator.empty()) {
    if (const auto found = FindTerminator(rule.terminator, held)) return found;
  }
  if (ended && whole <= rule.max_bytes) return Message{whole, MessageEnd::kOwnEnd};
  if (held == rule.max_bytes) return Message{held, MessageEnd::kFull};
  return std::nullopt;
}

}  // namespace kolvane::devlnk
