#include "window/listener.h"

#include <utility>

namespace kolvane::window {
namespace {

// A line without an end is shown as it is after this time.
constexpr int kPartialLineMs = 200;
// Bytes that are not taken would activate the notifier again and again, so it is disabled; they are counted
// again after this time.
constexpr int kCountMs = 500;

}  // namespace

Listener::Listener(device::Device& device, const terminal::TerminalSlices& slices, terminal::Output& output,
                   terminal::ConnectCommands& connect, std::function<bool()> is_busy)
    : device_(device),
      unasked_(device, slices.device, slices.terminal, output, connect),
      is_busy_(std::move(is_busy)) {
  again_.setSingleShot(true);
  partial_line_timer_.setSingleShot(true);
  QObject::connect(&again_, &QTimer::timeout, this, &Listener::Take);
  QObject::connect(&partial_line_timer_, &QTimer::timeout, this, [this] { unasked_.ShowPartialLine(); });
}

void Listener::Renew() {
  const int descriptor = device_.WaitDescriptor();
  if (descriptor < 0) return notifier_.reset();
  if (notifier_ != nullptr && notifier_->socket() == descriptor) return;
  notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, this, &Listener::Take);
}

void Listener::Look() {
  if (notifier_ == nullptr || is_busy_()) return;
  notifier_->setEnabled(true);
  if (device_.BytesWaiting() > 0) again_.start(0);
}

void Listener::EndLine() {
  partial_line_timer_.stop();
  unasked_.ShowPartialLine();
}

void Listener::Take() {
  if (notifier_ == nullptr) return;
  // During a command the port belongs to it; Look follows.
  if (is_busy_()) return notifier_->setEnabled(false);
  const bool more = unasked_.Take();
  // The connection may have ended in the meantime.
  if (notifier_ == nullptr) return;
  notifier_->setEnabled(more);
  if (device_.BytesWaiting() > 0) again_.start(more ? 0 : kCountMs);
  if (unasked_.HasPartialLine()) partial_line_timer_.start(kPartialLineMs);
}

}  // namespace kolvane::window
