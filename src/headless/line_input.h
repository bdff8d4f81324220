#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace kolvane::headless {

enum class WaitEnd { kReadable, kDue, kGivenUp };

/// Waits until `descriptor` is readable (negative: none) or `due`. Calls `give_up` about every 50 ms and
/// after a signal, but not if there is no need to wait.
WaitEnd WaitFor(int descriptor, std::optional<std::chrono::steady_clock::time_point> due,
                const std::function<bool()>& give_up);

/// Reads lines from a descriptor as they arrive. LF ends a line, a CR before it is part of the line end.
class LineInput {
 public:
  static constexpr std::size_t kLongestLine = 1 << 20;  // bytes without the line end

  enum class Result { kLine, kEnd, kGivenUp, kFailed };

  explicit LineInput(int descriptor) : descriptor_(descriptor) {}

  /// Reads the next line; bytes after the last LF are a line too. While waiting, `give_up` is called about
  /// every 50 ms.
  Result Next(std::string& line, const std::function<bool()>& give_up);

  /// Whether Next can return a line without reading.
  bool HasLine();

  /// The errno of kFailed; EMSGSIZE for a line that is too long.
  int error() const { return error_; }

 private:
  bool TakeLine(std::string& line);
  Result TooLong();
  /// False at the end, or if reading fails.
  bool Read();

  int descriptor_;
  std::string bytes_;
  std::size_t begin_ = 0;
  std::size_t scanned_ = 0;  // no LF from begin_ to here
  int error_ = 0;
};

}  // namespace kolvane::headless
