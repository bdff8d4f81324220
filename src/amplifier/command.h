#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "amplifier/line_handler.h"
#include "amplifier/state.h"

namespace kolvane::amplifier {

/// Ignores the case of the letters A to Z.
bool EqualsNoCase(std::string_view a, std::string_view b);

/// All of `text` as a decimal number within the bounds, or nothing.
std::optional<std::int64_t> ParseInteger(std::string_view text, std::int64_t minimum, std::int64_t maximum);

/// All of `text` as a finite number with a decimal point, magnitude at most 1e9; or nothing.
std::optional<double> ParseNumber(std::string_view text);

/// The index of `text` in `words`, ignoring case, or nothing.
std::optional<std::size_t> ParseWord(std::string_view text, std::span<const std::string_view> words);

/// A channel parameter: "3", "2-5", "0" for all.
struct ChannelRange {
  std::size_t first = 0;  // 0-based
  std::size_t count = 0;
};
std::optional<ChannelRange> ParseChannels(std::string_view text);

/// The parameters after a command word: separated by ",", without surrounding spaces.
class Arguments {
 public:
  static constexpr std::size_t kMax = 8;

  /// `text` is everything after the word and one space. Keeps views into it.
  explicit Arguments(std::string_view text);

  /// The number of parameters; more than kMax count as kMax + 1.
  std::size_t size() const { return size_; }
  /// Empty if there is no such parameter.
  std::string_view operator[](std::size_t i) const {
    return i < size_ && i < kMax ? fields_[i] : std::string_view();
  }
  /// The text as sent, neither split nor trimmed.
  std::string_view whole() const { return whole_; }

 private:
  std::string_view whole_;
  std::array<std::string_view, kMax> fields_;
  std::size_t size_ = 0;
};

/// One row of the command set. `run` gets an empty reply line and an argument count within the bounds; its
/// reply is used only if it returns Refusal::kNone.
struct Command {
  std::string_view word;  // upper case
  std::size_t min_arguments;
  std::size_t max_arguments;
  Refusal (*run)(State& state, const Arguments& arguments, Reply& reply);
};

/// For a command that accepts any text after its word.
inline constexpr std::size_t kAnyCount = Arguments::kMax + 1;

std::span<const Command> SystemCommands();
std::span<const Command> ChannelCommands();
std::span<const Command> MeasuringCommands();
std::span<const Command> LineCommands();

/// The answer of a successful setting command.
Refusal Done(Reply& reply);
/// No answer: the command ends the dialogue.
Refusal NoAnswer(Reply& reply);

/// Appends a number, after a comma if the answer already has a field.
void AppendField(std::string& answer, std::int64_t value);
void AppendField(std::string& answer, std::string_view text);
/// The shortest text that reads back as the same number, without exponent unless it is tiny.
void AppendField(std::string& answer, double value);
void AppendFixed(std::string& answer, double value, int decimals);
/// With a suitable number of decimals for a channel of that range.
void AppendMeasured(std::string& answer, double value, double range);

}  // namespace kolvane::amplifier
