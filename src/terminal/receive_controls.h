#pragma once

#include <string_view>

#include "device/device.h"
#include "terminal/output.h"
#include "terminal/terminal_state.h"

namespace kolvane::terminal {

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
