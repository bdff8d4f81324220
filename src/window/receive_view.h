#pragma once

#include <QObject>

#include "terminal/receive_controls.h"
#include "window/message_prompt.h"
#include "window/terminal_bar.h"

namespace kolvane::window {

/// Connects the receive and send controls of the bar with their rules.
class ReceiveView final : public QObject, private terminal::ReceiveControlsView {
  Q_OBJECT

 public:
  ReceiveView(TerminalBar* bar, terminal::TerminalState& state, device::Device& device, MessagePrompt& prompt,
              QObject* parent);

  terminal::ReceiveControls& controls() { return controls_; }

 Q_SIGNALS:
  /// The bar may need a different height.
  void CountShownOrHidden();

 private:
  void ShowReceiveControls(const terminal::ReceiveShown& shown, bool count_visible) override;
  void Fill();
  void Connect(MessagePrompt& prompt);

  TerminalBar* bar_;
  terminal::ReceiveControls controls_;
  bool showing_ = false;
  bool picked_ = false;
};

}  // namespace kolvane::window
