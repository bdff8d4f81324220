#pragma once

#include <QApplication>
#include <QTranslator>
#include <memory>
#include <new>
#include <string>

namespace kolvane::component {

/// An application in which running out of memory ends only the current event, such as a paint, before the
/// exception reaches Qt's own functions, which are not exception-safe.
class GuardedApplication final : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    try {
      return QApplication::notify(receiver, event);
    } catch (const std::bad_alloc&) {
      return false;
    }
  }
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
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

 private:
  void MakeOwn();
  void RestoreLocale() const;

  std::string host_locale_;
  std::unique_ptr<QApplication> own_;
  QTranslator german_;
};

}  // namespace kolvane::component
