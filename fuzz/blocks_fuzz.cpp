// Bytes of an instrument, read with blocks recognised, as Windows-1252 and as UTF-8: a complete block is one
// answer.
#include <charconv>
#include <optional>

#include "fuzz/input.h"
#include "fuzz/require.h"
#include "fuzz/session_rig.h"
#include "fuzz/utf8.h"

namespace kolvane::fuzz {
namespace {

using terminal::receive_mode::kAuto;
using terminal::receive_mode::kTerminator;

constexpr int kMaxAnswers = 8;
constexpr std::string_view kTerminators[] = {"\r\n", "\n", "\r", "a"};

void Configure(SessionRig& rig, Input& input) {
  const std::uint8_t settings = input.Byte();
  terminal::TerminalState& state = rig.state;
  state.extras.blocks = true;
  rig.device_state.utf8 = (settings & 1) != 0;
  state.receive.mode = (settings & 2) != 0 ? kAuto : kTerminator;
  state.receive.binary_display = (settings & 4) != 0 ? 1 : 0;
  state.receive.receive_terminator = kTerminators[settings / 8 % std::size(kTerminators)];
  state.shown.format = state.receive.mode == kAuto ? 1 : 0;
}

/// The block at the start of `bytes` if its length is given and it is complete.
std::optional<std::string_view> WholeBlock(std::string_view bytes) {
  if (bytes.size() < 2 || bytes[0] != '#' || bytes[1] < '1' || bytes[1] > '9') return std::nullopt;
  const auto digits = static_cast<std::size_t>(bytes[1] - '0');
  const std::string_view length = bytes.substr(2, digits);
  std::size_t count = 0;
  const auto result = std::from_chars(length.data(), length.data() + length.size(), count);
  if (length.size() < digits || result.ec != std::errc() || result.ptr != length.data() + digits)
    return std::nullopt;
  const std::size_t head = 2 + digits;
  return count <= bytes.size() - head ? std::optional(bytes.substr(0, head + count)) : std::nullopt;
}

std::string Shown(std::string_view bytes, const SessionRig& rig) {
  std::string text;
  const bool binary = rig.state.receive.mode == kAuto && rig.state.receive.binary_display != 0;
  terminal::AppendDisplayForm(bytes, binary, text, rig.device_state.utf8);
  return text;
}

}  // namespace
}  // namespace kolvane::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  static fuzz::SessionRig rig;
  rig.Reset();
  fuzz::Input input(data, size);
  fuzz::Configure(rig, input);
  const std::string_view first = input.Take(input.Byte());
  const std::string sent = std::string(first) + std::string(input.Rest());
  rig.library.Send(first, input.Rest());
  for (int answers = 0; answers < fuzz::kMaxAnswers; ++answers) {
    const bool nothing_put_back = rig.device_state.put_back.empty();
    const std::string left = sent.substr(rig.library.consumed().size());
    const bool received = rig.session.GetAnswer();
    fuzz::Require(fuzz::IsUtf8(rig.state.last_answer.text));
    if (const auto block = fuzz::WholeBlock(left); nothing_put_back && block)
      fuzz::Require(received && rig.state.last_answer.text == fuzz::Shown(*block, rig));
    if (!received) break;
  }
  fuzz::Require(sent.starts_with(rig.library.consumed()));
  fuzz::Require(rig.library.consumed().size() + rig.library.left() == sent.size());
  return 0;
}
