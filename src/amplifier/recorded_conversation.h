#pragma once

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

}  // namespace kolvane::amplifier
