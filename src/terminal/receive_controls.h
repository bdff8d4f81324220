#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "device/device.h"
#include "terminal/output.h"
#include "terminal/terminal_state.h"
#include "terminal/texts.h"

namespace kolvane::terminal {

inline constexpr std::string_view kCrLf = "\r\n";

/// Both lists hold the same words; each starts with the one used most.
inline constexpr std::array<std::string_view, 4> kReceiveTerminatorWords = {texts::kCrLf, texts::kCr,
                                                                            texts::kLf, texts::kNoTerminator};
inline constexpr std::array<std::string_view, 4> kSendTerminatorWords = {texts::kLf, texts::kCr, texts::kCrLf,
                                                                         texts::kNoTerminator};

/// The receive terminator for the text of RcvTermChar: a word of the list or a character code; no value for
/// any other text. Throws RuntimeError kInvalidArgument for a code outside 0 to 255.
std::optional<std::string> ReceiveTerminator(std::string_view shown);

/// The send terminator for the text of SendTermChar: a word of the list, a character code, or the text
/// itself. Throws as ReceiveTerminator does.
std::string SendTerminator(std::string_view shown);

/// How a terminator is shown: its word, or the terminator itself if it has no word.
std::string TerminatorWord(std::string_view terminator);

inline constexpr std::size_t kCountedAnswerLimit = 1025;  ///< bytes of an answer in mode 2

// The numbers in the other two fields. Throw RuntimeError, its text naming the field: kTypeMismatch for a
// text that is not a number, kOverflow for one outside the type's range.

/// ReceiveTimo, milliseconds as a 32-bit number.
std::int32_t TypedTimeout(std::string_view text);
/// BinChars, a 16-bit number; kSubscript for a negative one.
std::size_t TypedCount(std::string_view text);
/// kSubscript for a count above kCountedAnswerLimit; to be called once so many bytes have been read.
void CheckCount(std::size_t count);

/// Why the functions above would throw for `text`; empty if they would not.
std::string TimeoutFault(std::string_view text);
std::string CountFault(std::string_view text);

/// The controls themselves; the window implements it.
class ReceiveControlsView {
 public:
  virtual ~ReceiveControlsView() = default;
  /// Puts everything in `shown` into the controls; BinChars is visible if `count_visible`. Picks and edits
  /// reported by the controls during the call are ignored.
  virtual void ShowReceiveControls(const ReceiveShown& shown, bool count_visible) = 0;
};

/// The rules of cmbReceiveMode, cmbReceiveFormat, RcvTermChar, SendTermChar, ReceiveTimo and BinChars: how
/// the lists affect each other, the settings and the device. The window forwards each edit and each pick,
/// even of the item already shown.
class ReceiveControls {
 public:
  ReceiveControls(ReceiveSettings& settings, ReceiveShown& shown, device::Device& device,
                  ReceiveControlsView& view)
      : settings_(settings), shown_(shown), device_(device), view_(view) {}

  /// Shows the loaded settings (including `ReceiveShown::timeout`), sets the device's time-out and flushes
  /// its input. Throws RuntimeError for a mode or format not in the lists and for a time-out that is not a
  /// number.
  void Load(Output& output);

  /// Mode 0 throws RuntimeError for a time-out that is not a number, after everything else has been done. An
  /// index outside the list is ignored.
  void PickMode(int index);
  void PickFormat(int index);

  /// Throw RuntimeError kInvalidArgument for a character code outside 0 to 255; the terminator is unchanged
  /// then.
  void EditReceiveTerminator(std::string_view text);
  void EditSendTerminator(std::string_view text);
  void EditTimeout(std::string_view text);
  void EditCount(std::string_view text);

 private:
  void SetReceiveTerminator(std::string_view terminator);
  void Show();
  void SetTimeoutAsTyped();

  ReceiveSettings& settings_;
  ReceiveShown& shown_;
  device::Device& device_;
  ReceiveControlsView& view_;
  bool showing_ = false;
};

}  // namespace kolvane::terminal
