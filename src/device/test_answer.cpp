#include "device/test_answer.h"

#include <algorithm>

#include "base/codepage.h"

namespace kolvane::device {

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
