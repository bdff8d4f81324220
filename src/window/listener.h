#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>

#include "terminal/terminal_core.h"
#include "terminal/unasked.h"

namespace kolvane::window {

/// Watches the open port while no command is in progress: for unasked bytes, and for the end of the
/// connection. Waits on the port's descriptor, so that an idle window costs nothing.
class Listener final : public QObject {
  Q_OBJECT

 public:
  Listener(device::Device& device, const terminal::TerminalSlices& slices, terminal::Output& output,
           terminal::ConnectCommands& connect, std::function<bool()> is_busy);

  /// To be called when the connection has been opened or closed.
  void Renew();
  /// To be called before the descriptor becomes invalid.
  void Forget() { notifier_.reset(); }
  /// To be called after each event: bytes may have arrived while the window was busy, or listening was
  /// switched on.
  void Look();
  /// To be called before a command or a run: shows what has come of an unfinished line, so that it does not
  /// follow the answer.
  void EndLine();

 private:
  void Take();

  device::Device& device_;
  terminal::Unasked unasked_;
  std::function<bool()> is_busy_;
  std::unique_ptr<QSocketNotifier> notifier_;
  QTimer again_;
  QTimer partial_line_timer_;
};

}  // namespace kolvane::window
