#include "amplifier/instrument.h"

#include <utility>

#include "base/text.h"

namespace kolvane::amplifier {
namespace {

const Command* Find(std::string_view word) {
  for (const auto rows : {SystemCommands(), ChannelCommands(), MeasuringCommands(), LineCommands()}) {
    for (const Command& row : rows) {
      if (EqualsNoCase(row.word, word)) return &row;
    }
  }
  return nullptr;
}

}  // namespace

Instrument::Instrument(const base::Clock& clock, Setup setup)
    : state_{.clock = clock,
             .seed = setup.seed,
             .start_transmission = setup.transmission,
             .files = std::move(setup.files)} {
  Restart(state_);
}

void Instrument::Handle(const Line& line, Reply& reply) {
  reply.kind = Reply::Kind::kLine;
  reply.bytes.clear();
  reply.wait_ms = 0;
  if (!line.too_long && base::TrimSpaces(line.text).empty()) {
    reply.kind = Reply::Kind::kNone;
    return;
  }
  const bool muted = state_.mute > 0;
  if (muted) --state_.mute;
  const Refusal refusal = Run(line, reply);
  if (refusal != Refusal::kNone) {
    state_.last_refusal = refusal;
    reply.kind = Reply::Kind::kLine;
    reply.bytes.assign(1, '?');
  }
  if (muted) reply.kind = Reply::Kind::kNone;
}

Refusal Instrument::Run(const Line& line, Reply& reply) {
  if (line.too_long) return Refusal::kLineTooLong;
  std::string_view text = line.text;
  text.remove_prefix(text.find_first_not_of(' '));
  const std::size_t space = text.find(' ');
  const Command* command = Find(text.substr(0, space));
  if (command == nullptr) return Refusal::kUnknownCommand;
  const Arguments arguments(space == std::string_view::npos ? std::string_view() : text.substr(space + 1));
  if (arguments.size() < command->min_arguments || arguments.size() > command->max_arguments)
    return Refusal::kWrongParameterCount;
  return command->run(state_, arguments, reply);
}

}  // namespace kolvane::amplifier
