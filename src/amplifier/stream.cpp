#include "amplifier/stream.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

#include "amplifier/command.h"

namespace kolvane::amplifier {

Transfer Transfer::Of(ssize_t returned) {
  if (returned > 0) return {Kind::kMoved, static_cast<std::size_t>(returned)};
  if (returned < 0 && base::IsTransient(errno)) return {};
  return {Kind::kEnded, 0};
}

namespace {

constexpr std::string_view kWords[] = {"CRLF", "CR", "LF", "NONE"};
constexpr std::string_view kTerminators[] = {"\r\n", "\r", "\n", ""};

}  // namespace

std::optional<std::string_view> TerminatorNamed(std::string_view word) {
  const auto row = ParseWord(word, kWords);
  if (!row) return std::nullopt;
  return kTerminators[*row];
}

std::string_view NameOfTerminator(std::string_view terminator) {
  const auto found = std::ranges::find(kTerminators, terminator);
  return found == std::end(kTerminators) ? std::string_view() : kWords[found - kTerminators];
}

std::span<char> LineSplitter::Space() {
  if (begin_ > 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    scanned_ -= begin_;
    begin_ = 0;
  }
  return std::span(buffer_).subspan(end_);
}

std::optional<Line> LineSplitter::Next() {
  SkipLfOfPair();
  while (scanned_ < end_ && buffer_[scanned_] != '\n' && buffer_[scanned_] != '\r') ++scanned_;
  if (scanned_ == end_) {
    KeepUnfinished();
    return std::nullopt;
  }
  const std::string_view text(buffer_.data() + begin_, scanned_ - begin_);
  const bool too_long = discarding_ || text.size() > kMaxLine;
  after_cr_ = buffer_[scanned_] == '\r';
  begin_ = ++scanned_;
  discarding_ = false;
  return Line{too_long ? std::string_view() : text, too_long};
}

void LineSplitter::SkipLfOfPair() {
  if (!after_cr_ || begin_ == end_) return;
  after_cr_ = false;
  if (buffer_[begin_] != '\n') return;
  ++begin_;
  scanned_ = std::max(scanned_, begin_);
}

// An unfinished line that is too long is dropped, so that the buffer never fills up.
void LineSplitter::KeepUnfinished() {
  if (end_ - begin_ > kMaxLine) discarding_ = true;
  if (discarding_) begin_ = end_;
}

}  // namespace kolvane::amplifier
