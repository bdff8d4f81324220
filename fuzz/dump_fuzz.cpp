// A selection of the pane becomes a dump, in which the caret moves and values are read.
#include "base/runtime_error.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "inspect/decode.h"
#include "inspect/hex_dump.h"

namespace kolvane::fuzz {
namespace {

using inspect::DumpView;
using inspect::Position;

constexpr std::size_t kMaxRepeats = 64;

void CheckLayout(std::string_view dump) {
  Require(dump.size() % inspect::kLineLength == 0);
  for (; !dump.empty(); dump.remove_prefix(inspect::kLineLength))
    Require(dump.substr(inspect::kLineText, 2) == "\r\n" && dump[0] >= '0' && dump[0] <= '9');
}

void RequireWithin(const DumpView& view) {
  Require(view.caret >= 0 && view.selected >= 0 && view.caret + view.selected <= view.Length());
}

void CheckBox(const inspect::BoxPositions& positions, const DumpView& view) {
  const Position box = positions.ToBox(view.caret);
  Require(box >= 0 && box <= view.caret);
  const Position back = positions.FromBox(box);
  Require(back >= view.caret && back <= view.caret + 1);
}

/// One byte stands for one action of the user.
void Act(std::uint8_t action, DumpView& view, inspect::InspectorState& state) {
  switch (action % 8) {
    case 0:
      return inspect::PressKey(inspect::key::kLeft, view);
    case 1:
      return inspect::PressKey(inspect::key::kRight, view);
    case 2:
      return inspect::EnsureValidCaretPos(view);
    case 3:
      return view.MoveTo(view.Length() * (action / 8) / 31);
    case 4:
      state.network_order = !state.network_order;
      return;
    default:
      state.format_code = action / 8 % inspect::format::kTemplate;
      const inspect::Decoded decoded = inspect::InspectBytePattern("", ",", view, state);
      Require(decoded.caption && !decoded.caption->empty() && !decoded.lines);
  }
}

}  // namespace
}  // namespace kolvane::fuzz

/// The repetitions of the selection, the number of actions, the actions, the selection.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kolvane;
  fuzz::Input input(data, size);
  const std::size_t times = 1 + input.Byte() % fuzz::kMaxRepeats;
  fuzz::Input actions(input.Take(input.Byte()));
  std::string marked;
  for (std::size_t i = 0; i < times; ++i) marked += input.Rest();
  const std::string dump = inspect::BuildDump(marked);
  fuzz::CheckLayout(dump);
  const inspect::BoxPositions positions(dump);
  fuzz::DumpView view{dump};
  inspect::InspectorState state;
  while (!actions.empty()) {
    fuzz::Act(actions.Byte(), view, state);
    fuzz::RequireWithin(view);
    fuzz::CheckBox(positions, view);
  }
  return 0;
}
