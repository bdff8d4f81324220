#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kolvane::amplifier {

/// Bytes that one side sent at once.
struct Message {
  bool from_terminal = false;  ///< else from the instrument
  std::string bytes;
  std::optional<double> seconds;  ///< time on the transcript's clock
  int line = 0;                   ///< of the transcript, from 1
  bool operator==(const Message&) const = default;
};

/// The instrument's end hung up.
struct HangUp {
  std::optional<double> seconds;  ///< time on the transcript's clock
};

/// One connection; empty ones are not kept.
struct Conversation {
  std::optional<double> seconds;  ///< when it was opened
  std::vector<Message> messages;
  std::optional<HangUp> hang_up = {};  ///< after all of them; empty if the terminal closed
};

/// Why a text is not a transcript, one English line.
struct TranscriptProblem {
  int line = 0;
  std::string text;
};

/// Reads the form described in docs/formats/transcript.md; unknown keys are ignored.
std::variant<std::vector<Conversation>, TranscriptProblem> ReadTranscript(std::string_view text);

/// The instrument's side of one recorded conversation: sends what was recorded, each part once the terminal
/// has sent the same bytes as in the recording, and detects the first byte that differs.
class Replay {
 public:
  using Clock = std::chrono::steady_clock;

  /// `conversation` must outlive this object. With `recorded_times` answers are delayed as in the transcript
  /// if it has times; otherwise they are sent at once.
  Replay(const Conversation& conversation, bool recorded_times, Clock::time_point now);

  /// Takes bytes from the terminal; ignored after a difference.
  void Take(std::string_view bytes, Clock::time_point now);
  /// When the instrument next sends or hangs up; nothing while it is the terminal's turn, and after the end.
  std::optional<Clock::time_point> Due() const;
  /// Returns the bytes that are due at `now`.
  std::string TakeDue(Clock::time_point now);
  /// Whether the last TakeDue() hung up.
  bool hung_up() const { return hung_up_; }
  /// Whether it hangs up at the end. Bytes sent by the terminal meanwhile are no difference: it cannot know.
  bool HangsUp() const { return conversation_.hang_up.has_value(); }

  /// Whether the terminal has sent anything.
  bool started() const { return started_; }
  /// Whether everything has been sent and received.
  bool finished() const { return at_ == conversation_.messages.size(); }
  /// The terminal sends no more: a difference if the recording has more from it.
  void End();
  /// "12: expected "A\n", got "B\n"", starting with the transcript's line, or its last line after the end;
  /// empty if there is none.
  const std::string& difference() const { return difference_; }

 private:
  const Message& next() const { return conversation_.messages[at_]; }
  bool IsTerminalNext() const { return !finished() && next().from_terminal; }
  void Compare(Clock::time_point now);
  void Pass(const Message& message, Clock::time_point moment);
  std::optional<Clock::time_point> After(std::optional<double> seconds) const;
  void Differ(std::string_view expected, std::string_view got);

  const Conversation& conversation_;
  bool recorded_times_;
  std::size_t at_ = 0;
  std::string received_;  // not yet compared
  bool started_ = false;
  bool hung_up_ = false;
  Clock::time_point last_;              // time of the last message
  std::optional<double> last_seconds_;  // its time in the transcript
  std::string difference_;
};

/// The bytes in quotation marks, with control characters and bytes above 126 as \n, \r, \t or \x0D.
std::string Quoted(std::string_view bytes);

}  // namespace kolvane::amplifier
