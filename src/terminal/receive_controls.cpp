#include "terminal/receive_controls.h"

#include "base/runtime_error.h"
#include "terminal/output.h"
#include "terminal/texts.h"
#include "terminal/typed_fields.h"

namespace kolvane::terminal {
namespace {

bool IsMode(int index) { return index >= 0 && index < static_cast<int>(texts::kReceiveModes.size()); }

bool IsFormat(int index) { return index >= 0 && index < static_cast<int>(texts::kReceiveFormats.size()); }

}  // namespace

void ReceiveControls::Load(Output& output) {
  if (!IsMode(settings_.mode) || !IsFormat(settings_.binary_display))
    throw base::RuntimeError(base::RuntimeError::Kind::kInvalidArgument);
  shown_.mode = settings_.mode;
  shown_.format = settings_.binary_display;
  shown_.receive_terminator = TerminatorWord(settings_.receive_terminator);
  shown_.send_terminator = TerminatorWord(settings_.send_terminator);
  Show();
  if (settings_.mode == receive_mode::kAuto) {
    device_.SetTimeout(kGapMs);
  } else {
    SetTimeoutAsTyped();
  }
  FlushInput(device_, output);
}

void ReceiveControls::PickMode(int index) {
  if (showing_ || !IsMode(index)) return;
  settings_.mode = static_cast<std::uint8_t>(index);
  shown_.mode = index;
  const bool by_terminator = settings_.mode == receive_mode::kTerminator;
  SetReceiveTerminator(by_terminator ? kCrLf : "");
  // Only the list changes to "ASCII"; the display flag stays until a format is picked.
  if (by_terminator) shown_.format = receive_format::kAscii;
  Show();
  if (by_terminator) SetTimeoutAsTyped();
}

void ReceiveControls::PickFormat(int index) {
  if (showing_ || !IsFormat(index)) return;
  settings_.binary_display = static_cast<std::uint8_t>(index);
  shown_.format = index;
  const bool binary = index == receive_format::kBinary;
  SetReceiveTerminator(binary ? "" : kCrLf);
  // The mode list shows "Auto" in both cases, although "ASCII" receives up to the terminator.
  shown_.mode = receive_mode::kAuto;
  settings_.mode = binary ? receive_mode::kAuto : receive_mode::kTerminator;
  Show();
}

void ReceiveControls::EditReceiveTerminator(std::string_view text) {
  if (showing_) return;
  shown_.receive_terminator = text;
  if (auto terminator = ReceiveTerminator(text)) settings_.receive_terminator = std::move(*terminator);
}

void ReceiveControls::EditSendTerminator(std::string_view text) {
  if (showing_) return;
  shown_.send_terminator = text;
  settings_.send_terminator = SendTerminator(text);
}

void ReceiveControls::EditTimeout(std::string_view text) {
  if (!showing_) shown_.timeout = text;
}

void ReceiveControls::EditCount(std::string_view text) {
  if (!showing_) shown_.count = text;
}

void ReceiveControls::SetReceiveTerminator(std::string_view terminator) {
  settings_.receive_terminator = terminator;
  shown_.receive_terminator = TerminatorWord(terminator);
}

void ReceiveControls::Show() {
  showing_ = true;
  view_.ShowReceiveControls(shown_, settings_.mode == receive_mode::kCount);
  showing_ = false;
}

void ReceiveControls::SetTimeoutAsTyped() { device_.SetTimeout(TypedTimeout(shown_.timeout)); }

}  // namespace kolvane::terminal
