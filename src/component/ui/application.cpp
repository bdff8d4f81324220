#include "component/ui/application.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QSemaphore>
#include <QThread>
#include <stdexcept>
#include <thread>

#include "base/ui/qt_look.h"
#include "component/ui/display_probe.h"

namespace kolvane::component {
namespace {

constexpr const char* kNotItsThread =
    "OpenTerminal was called on another thread than the one of the host's application object";
constexpr const char* kNotTheMainThread =
    "OpenTerminal was called on another thread than the main one, in a process without an application object";

bool IsMainThread() { return getpid() == gettid(); }

// exec is protected.
class Loops final : public QThread {
 public:
  using QThread::exec;
};

// If a host ends its event loops (QCoreApplication::exit) while it runs none, Qt remembers that, and every
// loop ends as soon as it starts, until the next QThread::exec. After QThread::exit that one returns at once.
void ForgetEndOfLoops() {
  QThread* thread = QThread::currentThread();
  if (thread->loopLevel() > 0) return;
  thread->exit();
  (thread->*&Loops::exec)();
}

// A pool takes no notice of a thread that could not be started, and waits for it for ever.
QThreadPool& GlobalPoolIfThreadsAreAvailable() {
  std::thread([] {}).join();
  return *QThreadPool::globalInstance();
}

}  // namespace

GuardedApplication::GuardedApplication(int& count, char** arguments)
    : QApplication(count, arguments),
      pool_(GlobalPoolIfThreadsAreAvailable()),
      host_threads_(pool_.maxThreadCount()),
      host_expiry_ms_(pool_.expiryTimeout()) {
  pool_.setMaxThreadCount(1);
  pool_.setExpiryTimeout(-1);
  QSemaphore started;
  pool_.start([&started] { started.release(); });
  started.acquire();
}

GuardedApplication::~GuardedApplication() {
  pool_.setExpiryTimeout(host_expiry_ms_);
  pool_.setMaxThreadCount(host_threads_);
}

void Application::CheckThread() {
  const QCoreApplication* host = QCoreApplication::instance();
  if (host == nullptr && !IsMainThread()) throw std::runtime_error(kNotTheMainThread);
  if (host != nullptr && host->thread() != QThread::currentThread()) throw std::runtime_error(kNotItsThread);
}

Application::Application() {
  QCoreApplication* host = QCoreApplication::instance();
  if (host == nullptr) {
    MakeOwn();
  } else if (qobject_cast<QApplication*>(host) == nullptr) {
    throw std::runtime_error("the host's application object is no QApplication: no window can be shown");
  } else {
    ForgetEndOfLoops();
  }
  if (german_.load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&german_);
}

void Application::MakeOwn() {
  const DisplayProbe display;
  static int count = 1;
  static char name[] = "kolvane";
  static char* arguments[] = {name, nullptr};
  host_locale_.emplace();
  own_ = std::make_unique<GuardedApplication>(count, arguments);
  // The host's code runs during the call and converts numbers.
  host_locale_->Restore();
  QApplication::setApplicationName(QStringLiteral("Kolvane"));
  QApplication::setDesktopFileName(QStringLiteral("kolvane"));
  // A blinking caret would wake the processor twice a second for as long as the window is open.
  QApplication::setCursorFlashTime(0);
  base::EnsureReadableHints();
}

}  // namespace kolvane::component
