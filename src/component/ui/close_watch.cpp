#include "component/ui/close_watch.h"

#include <poll.h>
#include <unistd.h>

#include <QApplication>
#include <QTimer>

#include "base/descriptor.h"

namespace kolvane::component {
namespace {

// Other than base::IsReadable, false for a descriptor that the host has closed.
bool IsReadable(int descriptor) {
  pollfd event{descriptor, POLLIN, 0};
  return base::Uninterrupted([&] { return poll(&event, 1, 0); }) > 0 && (event.revents & POLLNVAL) == 0;
}

}  // namespace

CloseWatch::CloseWatch(int descriptor)
    : descriptor_(descriptor),
      host_modal_(QApplication::activeModalWidget()),
      messages_(STDERR_FILENO, false) {
  if (descriptor < 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] {
    notifier_->setEnabled(false);
    requested_ = true;
    CloseAll();
  });
}

bool CloseWatch::Made() const {
  return requested_ || (loop_ != nullptr && !loop_->isRunning()) ||
         (descriptor_ >= 0 && IsReadable(descriptor_));
}

void CloseWatch::SetWindow(window::MainWindow& window) {
  window_ = &window;
  if (requested_) QTimer::singleShot(0, &window, [&window] { window.close(); });
}

void CloseWatch::RunEvents() {
  QEventLoop loop;
  QObject::connect(window_, &window::MainWindow::Closed, &loop, &QEventLoop::quit);
  loop_ = &loop;
  // The window may have been closed together with a message about the list.
  if (window_->isVisible()) loop.exec();
  loop_ = nullptr;
  requested_ = true;
}

// Close message boxes and dialogs above the window first: they would block it.
void CloseWatch::CloseAll() {
  for (QWidget* top = QApplication::activeModalWidget();
       top != nullptr && top != window_ && top != host_modal_; top = QApplication::activeModalWidget()) {
    if (!top->close()) break;
  }
  if (window_ != nullptr) window_->close();
}

}  // namespace kolvane::component
