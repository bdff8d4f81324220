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
  /// Puts everything of `shown` into the controls; BinChars is visible when `count_visible`. Picks and edits
  /// that the controls report during the call are ignored.
  virtual void ShowReceiveControls(const ReceiveShown& shown, bool count_visible) = 0;
};

/// The rules of cmbReceiveMode, cmbReceiveFormat, RcvTermChar, SendTermChar, ReceiveTimo and BinChars:
/// the lists' coupling and their effect on settings and device. The window forwards each pick (of the item
/// that is shown already, too) and each edit.
class ReceiveControls {
 public:
  ReceiveControls(ReceiveSettings& settings, ReceiveShown& shown, device::Device& device,
                  ReceiveControlsView& view)
      : settings_(settings), shown_(shown), device_(device), view_(view) {}

  /// Shows the loaded settings (`ReceiveShown::timeout` is one of them), sets the device's time-out and
  /// flushes its input. Throws RuntimeError for a mode or format that the lists lack and for a time-out that
  /// is not a number.
  void Load(Output& output);

  /// Mode 0 throws RuntimeError for a time-out that is not a number; all else has been done then. An index
  /// that the list lacks is ignored.
  void PickMode(int index);
  void PickFormat(int index);

  /// Throw RuntimeError kInvalidArgument for a character code outside 0 to 255; the terminator stays as it
  /// was.
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
