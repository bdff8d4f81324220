#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <functional>
#include <memory>

#include "terminal/terminal_core.h"
#include "terminal/unasked.h"

namespace kolvane::window {

/// Looks at the open port while no command is under way: for what comes unasked, and for the end of the
/// connection. Waits on the port's descriptor, so that an idle window costs nothing.
class Listener final : public QObject {
  Q_OBJECT

 public:
  Listener(device::Device& device, const terminal::TerminalSlices& slices, terminal::Output& output,
           terminal::ConnectCommands& connect, std::function<bool()> is_busy);

  /// There is another connection, or none.
  void Renew();
  /// The descriptor goes.
  void Forget() { notifier_.reset(); }
  /// To be called after each event: something may have come while the window was busy, or listening was
  /// switched on.
  void Look();

 private:
  void Take();

  device::Device& device_;
  terminal::Unasked unasked_;
  std::function<bool()> is_busy_;
  std::unique_ptr<QSocketNotifier> notifier_;
  QTimer again_;
  QTimer rest_;
};

}  // namespace kolvane::window
