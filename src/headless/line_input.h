#pragma once

#include <functional>
#include <string>

namespace kolvane::headless {

/// The lines that a descriptor brings, as they come. LF ends a line, a CR before it belongs to the end.
class LineInput {
 public:
  static constexpr std::size_t kLongestLine = 1 << 20;

  enum class Result { kLine, kEnd, kGivenUp, kFailed };

  explicit LineInput(int descriptor) : descriptor_(descriptor) {}

  /// The next line; what stands after the last LF is one, too. While none has come `give_up` is asked about
  /// every 50 ms.
  Result Next(std::string& line, const std::function<bool()>& give_up);

  /// Whether Next has one without reading.
  bool HasLine();

  /// The errno of kFailed; EMSGSIZE for a line that is too long.
  int error() const { return error_; }

 private:
  bool TakeLine(std::string& line);
  /// False at the end, and where reading fails.
  bool Read();

  int descriptor_;
  std::string bytes_;
  std::size_t begin_ = 0;
  std::size_t scanned_ = 0;  // has no LF from begin_ to here
  int error_ = 0;
};

}  // namespace kolvane::headless
