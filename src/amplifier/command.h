#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "amplifier/arguments.h"
#include "amplifier/line_commands.h"
#include "amplifier/state.h"

namespace kolvane::amplifier {

/// One row of the command set. `run` gets a reply that is an empty line and an argument count within the
/// bounds; what it wrote into the reply counts only when it refuses nothing.
struct Command {
  std::string_view word;  // upper case
  std::size_t least_arguments;
  std::size_t most_arguments;
  Refusal (*run)(State& state, const Arguments& arguments, Reply& reply);
};

/// For a command that takes any text after its word.
inline constexpr std::size_t kAnyCount = Arguments::kMax + 1;

std::span<const Command> SystemCommands();
std::span<const Command> ChannelCommands();
std::span<const Command> MeasuringCommands();
std::span<const Command> LineCommands();

/// The answer of a setting command that was carried out.
Refusal Done(Reply& reply);
/// No answer: the command ends the dialogue.
Refusal NoAnswer(Reply& reply);

/// Appends a number; a comma goes before it where the answer already has a field.
void AppendField(std::string& answer, std::int64_t value);
void AppendField(std::string& answer, std::string_view text);
/// The shortest text that reads back as the same number, without exponent unless it is tiny.
void AppendField(std::string& answer, double value);
void AppendFixed(std::string& answer, double value, int decimals);
/// With the number of decimals that suits a channel of that range.
void AppendMeasured(std::string& answer, double value, double range);

}  // namespace kolvane::amplifier
