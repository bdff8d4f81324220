#pragma once

#include <QApplication>
#include <QThreadPool>
#include <QTranslator>
#include <clocale>
#include <memory>
#include <new>
#include <optional>
#include <string>

namespace kolvane::component {

/// An application in which running out of memory ends only the current event, such as a paint, before the
/// exception reaches Qt's own functions, which are not exception-safe.
///
/// Qt paints on a thread pool as well, and ends the process if it cannot start one of its threads, for
/// example without a free descriptor. The pool therefore has a single thread here, which runs as long as this
/// object lives.
class GuardedApplication final : public QApplication {
 public:
  /// Throws std::system_error if no thread is available.
  GuardedApplication(int& count, char** arguments);
  ~GuardedApplication() override;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
      return false;
    }
  }

 private:
  QThreadPool& pool_;
  const int host_threads_;
  const int host_expiry_ms_;
};

/// The locale at its creation, which it restores at the end.
class HostLocale {
 public:
  HostLocale() : name_(std::setlocale(LC_ALL, nullptr)) {}
  ~HostLocale() { Restore(); }
  HostLocale(const HostLocale&) = delete;
  HostLocale& operator=(const HostLocale&) = delete;

  void Restore() const { std::setlocale(LC_ALL, name_.c_str()); }

 private:
  std::string name_;
};

/// The QApplication that the window needs: the host's if it has one, otherwise one that lives as long as this
/// object. German texts for Qt's own buttons and dialogs are installed for the same time.
class Application {
 public:
  /// Throws std::runtime_error unless called on the thread of the host's application object, or on the main
  /// thread if the host has none: Qt's windows must stay on one thread.
  static void CheckThread();

  /// Throws NoDisplay, or std::runtime_error if the host's application supports no windows.
  Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

 private:
  void MakeOwn();

  std::optional<HostLocale> host_locale_;  // of an application of its own, for which Qt sets the user's
  std::unique_ptr<QApplication> own_;
  QTranslator german_;
};

}  // namespace kolvane::component
