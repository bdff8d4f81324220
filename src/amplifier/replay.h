#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace kolvane::amplifier {

/// What one side sent at once.
struct Utterance {
  bool from_terminal = false;  ///< else from the instrument
  std::string bytes;
  std::optional<double> seconds;  ///< when, by the clock of its transcript
  int line = 0;                   ///< of the transcript, from 1
  bool operator==(const Utterance&) const = default;
};

/// The instrument's end of a connection.
struct HangUp {
  std::optional<double> seconds;  ///< when, by the same clock
};

/// One connection; those in which nothing happened are left out of a transcript.
struct Conversation {
  std::optional<double> seconds;  ///< when it was opened
  std::vector<Utterance> utterances;
  std::optional<HangUp> hang_up = {};  ///< after all of them; none where the terminal has closed
};

/// Why a text is no transcript, one English line.
struct TranscriptProblem {
  int line = 0;
  std::string text;
};

/// Reads what docs/formats/transcript.md describes; keys that it does not know are ignored.
std::variant<std::vector<Conversation>, TranscriptProblem> ReadTranscript(std::string_view text);

/// The instrument's part in one recorded conversation: it says what it said then, after the terminal has said
/// the same as then, and notices the first byte that differs.
class Replay {
 public:
  using Clock = std::chrono::steady_clock;

  /// `conversation` outlives this object. With `recorded_times` answers come after as long a time as in the
  /// transcript, as far as that has times; else at once.
  Replay(const Conversation& conversation, bool recorded_times, Clock::time_point now);

  /// What the terminal has sent. Nothing counts after a difference.
  void Take(std::string_view bytes, Clock::time_point now);
  /// When the instrument speaks next, or hangs up; nothing while it is the terminal's turn, and after the
  /// end.
  std::optional<Clock::time_point> Due() const;
  /// What it says up to `now`.
  std::string Say(Clock::time_point now);
  /// Whether it has hung up by the last Say.
  bool hung_up() const { return hung_up_; }
  /// Whether it does so at the end. What the terminal sends meanwhile is no difference: it cannot know.
  bool HangsUp() const { return conversation_.hang_up.has_value(); }

  /// Whether the terminal has sent anything.
  bool begun() const { return begun_; }
  /// Whether everything has been said.
  bool over() const { return at_ == conversation_.utterances.size(); }
  /// The terminal says no more: that is a difference where it had more to say.
  void End();
  /// "12: expected "A\n", got "B\n"", beginning with the transcript's line, or the last one after the end;
  /// empty while there is none.
  const std::string& difference() const { return difference_; }

 private:
  const Utterance& next() const { return conversation_.utterances[at_]; }
  bool IsTerminalsTurn() const { return !over() && next().from_terminal; }
  void Compare(Clock::time_point now);
  void Pass(const Utterance& utterance, Clock::time_point moment);
  std::optional<Clock::time_point> After(std::optional<double> seconds) const;
  void Differ(std::string_view expected, std::string_view got);

  const Conversation& conversation_;
  bool recorded_times_;
  std::size_t at_ = 0;
  std::string received_;  // and not compared yet
  bool begun_ = false;
  bool hung_up_ = false;
  Clock::time_point last_;              // when the last utterance was
  std::optional<double> last_seconds_;  // the same in the transcript
  std::string difference_;
};

/// The bytes as a text in quotation marks, control characters and bytes above 126 as \n, \r, \t or \x0D.
std::string Quoted(std::string_view bytes);

}  // namespace kolvane::amplifier
