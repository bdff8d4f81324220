#include "device/test_answer.h"

#include <algorithm>
#include <string>

#include "base/encoding.h"

namespace kolvane::device {
namespace {

std::int16_t CodeOf(char character) { return static_cast<std::uint8_t>(character); }

}  // namespace

std::int16_t WriteTerminatorCode(std::string_view terminator) {
  if (terminator == "\r\n") return kWriteCrLf;
  const std::string characters = base::ToWindows1252(terminator);
  return characters.size() == 1 ? CodeOf(characters.front()) : kWriteNothing;
}

[[gnu::hot]] std::int16_t ReadTerminatorCode(std::string_view terminator) {
  if (terminator.empty()) return kReadWithoutTerminator;
  const std::string_view last = terminator.substr(terminator.size() - 1);
  return CodeOf(base::IsAscii(last) ? last.front() : base::ToWindows1252(terminator).back());
}

void TestAnswer::Restart() {
  bytes_.clear();
  next_ = 0;
}

bool TestAnswer::Take(std::int32_t count, Bytes& buffer) {
  if (bytes_.empty()) bytes_ = base::ToWindows1252(Text());
  if (next_ == bytes_.size()) return false;
  const auto size = static_cast<std::size_t>(std::max(count, 0));
  const std::size_t taken = std::min(size, bytes_.size() - next_);
  if (buffer.size() < size) buffer.resize(size);
  const auto end = std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(next_), taken, buffer.begin());
  std::fill(end, buffer.begin() + static_cast<std::ptrdiff_t>(size), std::uint8_t{' '});
  next_ += taken;
  return true;
}

}  // namespace kolvane::device
