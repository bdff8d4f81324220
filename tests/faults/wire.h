#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kolvane::faults {

/// The instrument's end of one connection. Nothing here waits once the connection or the test has ended.
class Wire {
 public:
  /// `end_of_fault` becomes readable when the instrument must stop what it is doing.
  Wire(int fd, int end_of_fault);

  /// The next line without its LF, or the start of one longer than kLongLine; nothing at the end.
  std::optional<std::string> Line();
  /// False if it could not be sent in full.
  bool Send(std::string_view bytes);
  /// Sends each byte separately, with a gap after it.
  bool Drip(std::string_view bytes, int gap_ms);
  bool Pause(int milliseconds);
  /// Waits until the test calls for calm; that call ends only this wait.
  void AwaitEndOfFault();
  /// A TCP connection will end with a reset instead of an orderly close.
  void ResetAtEnd();

  static constexpr std::size_t kLongLine = 4096;

 private:
  bool Await(short events);

  int fd_;
  int end_of_fault_;
  std::string input_;
};

/// What the instrument does when it receives FAULT; its result says whether the connection ends then.
enum class After { kContinue, kEnd };
using Fault = std::function<After(Wire&)>;

}  // namespace kolvane::faults
