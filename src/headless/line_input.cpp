#include "headless/line_input.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>

#include "base/descriptor.h"

namespace kolvane::headless {
namespace {

constexpr std::chrono::milliseconds kPace{50};

timespec Left(std::optional<std::chrono::steady_clock::time_point> due) {
  std::chrono::nanoseconds left = kPace;
  if (due) left = std::clamp<std::chrono::nanoseconds>(*due - std::chrono::steady_clock::now(), {}, left);
  return {0, static_cast<long>(left.count())};
}

}  // namespace

WaitEnd WaitFor(int descriptor, std::optional<std::chrono::steady_clock::time_point> due,
                const std::function<bool()>& give_up) {
  for (;;) {
    pollfd entry{descriptor, POLLIN, 0};
    const timespec left = Left(due);
    if (ppoll(&entry, 1, &left, nullptr) > 0) return WaitEnd::kReadable;
    if (due && std::chrono::steady_clock::now() >= *due) return WaitEnd::kDue;
    if (give_up()) return WaitEnd::kGivenUp;
  }
}

LineInput::Result LineInput::Next(std::string& line, const std::function<bool()>& give_up) {
  while (!TakeLine(line)) {
    if (bytes_.size() - begin_ > kLongestLine + 1) return TooLong();  // the last one may be a CR
    if (WaitFor(descriptor_, std::nullopt, give_up) == WaitEnd::kGivenUp) return Result::kGivenUp;
    if (Read()) continue;
    if (error_ != 0) return Result::kFailed;
    if (bytes_.size() == begin_) return Result::kEnd;
    bytes_ += '\n';
  }
  return line.size() > kLongestLine ? TooLong() : Result::kLine;
}

LineInput::Result LineInput::TooLong() {
  error_ = EMSGSIZE;
  return Result::kFailed;
}

bool LineInput::HasLine() {
  scanned_ = std::min(bytes_.find('\n', scanned_), bytes_.size());
  return scanned_ < bytes_.size();
}

bool LineInput::TakeLine(std::string& line) {
  if (!HasLine()) {
    bytes_.erase(0, begin_);
    begin_ = 0;
    scanned_ = bytes_.size();
    return false;
  }
  line.assign(bytes_, begin_, scanned_ - begin_);
  if (line.ends_with('\r')) line.pop_back();
  begin_ = ++scanned_;
  return true;
}

bool LineInput::Read() {
  std::array<char, 4096> piece;
  const ssize_t got = read(descriptor_, piece.data(), piece.size());
  if (got > 0) bytes_.append(piece.data(), static_cast<std::size_t>(got));
  if (got >= 0) return got > 0;
  if (base::IsTransient(errno)) return true;
  error_ = errno;
  return false;
}

}  // namespace kolvane::headless
