#pragma once

#include <QApplication>
#include <QTranslator>
#include <memory>
#include <new>
#include <string>

namespace kolvane::component {

/// An application in which lack of memory ends the one event that needs it, a paint say, before it can unwind
/// Qt's own functions, which are not made for it.
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

/// The QApplication that the window needs: the host's where it has one, one of our own for as long as this
/// object lives otherwise. German texts for Qt's own buttons and dialogs hold for the same time.
class Application {
 public:
  /// Throws std::runtime_error unless this is the thread of the host's application object, or the main
  /// thread where the host has none: Qt's windows live on one thread.
  static void CheckThread();

  /// Throws NoDisplay, and std::runtime_error where the host's application has no windows.
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
