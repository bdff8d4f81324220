#include "terminal/receive_controls.h"

#include <cmath>

#include "base/encoding.h"
#include "base/number.h"
#include "base/runtime_error.h"

namespace kolvane::terminal {
namespace {

struct Word {
  std::string_view shown;
  std::string_view terminator;
};

constexpr std::array<Word, 4> kWords = {{
    {texts::kCrLf, kCrLf},
    {texts::kCr, "\r"},
    {texts::kLf, "\n"},
    {texts::kNoTerminator, ""},
}};

std::string CharacterOf(double code) {
  const double whole = std::nearbyint(code);
  if (!(whole >= 0 && whole <= 255)) throw base::RuntimeError(base::RuntimeError::Kind::kInvalidArgument);
  const char byte = static_cast<char>(static_cast<unsigned char>(whole));
  return base::FromWindows1252({&byte, 1});
}

template <typename Convert>
auto InField(std::string_view label, Convert convert) {
  try {
    return convert();
  } catch (const base::RuntimeError& error) {
    throw base::RuntimeError(error.kind(), texts::InField(label, error.what()));
  }
}

std::string FaultOf(std::string_view text, const auto& convert) {
  try {
    convert(text);
  } catch (const base::RuntimeError& error) {
    return error.what();
  }
  return {};
}

bool IsMode(int index) { return index >= 0 && index < static_cast<int>(texts::kReceiveModes.size()); }

bool IsFormat(int index) { return index >= 0 && index < static_cast<int>(texts::kReceiveFormats.size()); }

}  // namespace

std::optional<std::string> ReceiveTerminator(std::string_view shown) {
  for (const Word& word : kWords) {
    if (word.shown == shown) return std::string(word.terminator);
  }
  if (const auto code = base::WholeTextNumber(shown)) return CharacterOf(*code);
  return std::nullopt;
}

std::string SendTerminator(std::string_view shown) {
  return ReceiveTerminator(shown).value_or(std::string(shown));
}

std::string TerminatorWord(std::string_view terminator) {
  for (const Word& word : kWords) {
    if (word.terminator == terminator) return std::string(word.shown);
  }
  return std::string(terminator);
}

std::int32_t TypedTimeout(std::string_view text) {
  return InField(texts::kTimeoutLabel, [text] { return base::TextToInt32(text); });
}

std::size_t TypedCount(std::string_view text) {
  return InField(texts::kCountLabel, [text] {
    const std::int16_t typed = base::TextToInt16(text);
    if (typed < 0) throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
    return static_cast<std::size_t>(typed);
  });
}

void CheckCount(std::size_t count) {
  InField(texts::kCountLabel, [count] {
    if (count > kCountedAnswerLimit) throw base::RuntimeError(base::RuntimeError::Kind::kSubscript);
  });
}

std::string TimeoutFault(std::string_view text) { return FaultOf(text, TypedTimeout); }

std::string CountFault(std::string_view text) {
  return FaultOf(text, [](std::string_view typed) { CheckCount(TypedCount(typed)); });
}

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
