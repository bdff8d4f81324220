#pragma once

#include <QApplication>
#include <QTimer>
#include <clocale>
#include <functional>
#include <string>

#include "kolvane/HostObject.h"

namespace kolvane {

/// A host's device that records its surroundings when the loading terminal flushes its input (an application
/// object exists by then), and closes the window once it is shown.
class ClosingHost final : public HostObject {
 public:
  void GetDeviceInfo(Variant& Kind, Variant& Address) override {
    Kind = std::int16_t{1};
    Address = std::int16_t{5};
  }
  void FlushInQ(std::int32_t& Count) override {
    Count = 3;
    had_application = qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
    caret_blinks = QApplication::cursorFlashTime() > 0;
    locale = std::setlocale(LC_ALL, nullptr);
    QTimer::singleShot(0, qApp, on_shown);
  }
  Variant LastError() override { return std::int16_t{0}; }
  void SetLastError(std::int16_t) override {}
  std::string LastErrorDescription() override { return ""; }

  std::function<void()> on_shown = [] { QApplication::closeAllWindows(); };
  bool had_application = false;
  bool caret_blinks = true;
  std::string locale;
};

}  // namespace kolvane
