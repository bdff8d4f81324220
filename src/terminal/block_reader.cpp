#include "terminal/block_reader.h"

#include <algorithm>
#include <utility>

#include "terminal/terminal_state.h"

namespace kolvane::terminal {
namespace {

constexpr std::size_t kLargestPiece = 1u << 20;

}  // namespace

BlockReader::Result BlockReader::Read(std::string& block) {
  block_ = std::exchange(state_.put_back, {});
  base::BlockHead head;
  while (!head.IsWhole()) {
    if (block_.size() == head.bytes() && !Take(1)) return block_.empty() ? Result::kNothing : Result::kFailed;
    if (!head.Take(block_[head.bytes()])) return PutBack();
  }
  const Result result = head.IsCounted() ? TakeCounted(head) : TakeToTerminator(head.bytes());
  if (result == Result::kBlock) block = std::move(block_);
  return result;
}

// Appends up to `count` bytes; waits for them if needed.
bool BlockReader::Take(std::size_t count, std::string_view terminator) {
  const std::size_t received = device_.ReadBinary(terminator, static_cast<std::int32_t>(count), buffer_);
  if (device_.LastError().code < 0 || received == 0) return false;
  block_.append(reinterpret_cast<const char*>(buffer_.data()), std::min(received, count));
  return true;
}

// Available bytes are read at once; if there are none, the next byte is waited for.
std::size_t BlockReader::Piece(std::size_t left) {
  const auto waiting = static_cast<std::size_t>(std::max(device_.BytesWaiting(), 1));
  return std::min({waiting, left, kLargestPiece});
}

BlockReader::Result BlockReader::TakeCounted(const base::BlockHead& head) {
  const std::size_t length = head.length();
  if (length > base::kBlockLimit) return Result::kTooLong;
  const std::size_t end = head.bytes() + length;
  for (std::size_t reported = 0; block_.size() < end;) {
    if (!Take(Piece(end - block_.size()))) return Result::kFailed;
    const std::size_t percent = 100 * (block_.size() - (end - length)) / length;
    if (percent != std::exchange(reported, percent)) progress_(static_cast<int>(percent), length);
  }
  DropTerminator();
  return Result::kBlock;
}

// A piece ends at the terminator's last byte, which may also occur within the block. Beyond the limit only
// the terminator may follow.
BlockReader::Result BlockReader::TakeToTerminator(std::size_t head) {
  if (ending_.empty()) device_.SetTimeout(kGapMs);
  const std::size_t longest = head + base::kBlockLimit;
  const std::size_t most = longest + std::max<std::size_t>(ending_.size(), 1);
  do {
    if (!Take(Piece(std::min(most - block_.size(), kLargestPiece)), terminator_)) {
      if (!ending_.empty()) return Result::kFailed;
      ClearError();
      return Result::kBlock;
    }
    if (!ending_.empty() && block_.ends_with(ending_)) {
      block_.resize(block_.size() - ending_.size());
      return Result::kBlock;
    }
  } while (block_.size() <= longest || ending_.starts_with(std::string_view(block_).substr(longest)));
  return Result::kTooLong;
}

// Drops the terminator if it follows within the gap; if none is set, a line end counts as one.
void BlockReader::DropTerminator() {
  const std::size_t end = block_.size();
  const std::string_view expected = ending_.empty() ? std::string_view("\r\n") : ending_;
  device_.SetTimeout(kGapMs);
  std::size_t matched = 0;
  while (matched < expected.size() && Take(1)) {
    const char last = block_.back();
    if (last == expected[matched]) {
      ++matched;
    } else if (matched == 0 && last == expected.back()) {
      matched = expected.size();
    } else {
      break;
    }
  }
  if (matched < expected.size()) state_.put_back = block_.substr(end);
  block_.resize(end);
  ClearError();
}

// The gap that ends a block is not a failure of the exchange.
void BlockReader::ClearError() {
  device_.ClearLastError();
  state_.last_result = 0;
}

BlockReader::Result BlockReader::PutBack() {
  state_.put_back = std::move(block_);
  return Result::kNoBlock;
}

}  // namespace kolvane::terminal
