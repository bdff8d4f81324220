#include "component/application.h"

#include <xcb/xcb.h>

#include <QLibraryInfo>
#include <clocale>
#include <stdexcept>

#include "kolvane/MainClass.h"
#include "window/guarded_application.h"

namespace kolvane::component {
namespace {

bool XServerAnswers() {
  xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
  const bool answers = xcb_connection_has_error(connection) == 0;
  xcb_disconnect(connection);
  return answers;
}

bool HasDisplay() {
  const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
  if (!platform.isEmpty() && !platform.startsWith("xcb")) return true;
  if (platform.isEmpty() && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) return true;
  return XServerAnswers();
}

}  // namespace

Application::Application() {
  QCoreApplication* host = QCoreApplication::instance();
  if (host == nullptr) {
    MakeOwn();
  } else if (qobject_cast<QApplication*>(host) == nullptr) {
    throw std::runtime_error("the host's application object is no QApplication: no window can be shown");
  }
  if (german_.load(QStringLiteral("qtbase_de"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(&german_);
}

Application::~Application() {
  QCoreApplication::removeTranslator(&german_);
  if (!own_) return;
  own_.reset();
  std::setlocale(LC_ALL, host_locale_.c_str());
}

void Application::MakeOwn() {
  // Qt ends the whole process where it finds no display; the host shall get an error instead.
  if (!HasDisplay()) throw NoDisplay("no display: DISPLAY and WAYLAND_DISPLAY name none that answers");
  static int count = 1;
  static char name[] = "kolvane";
  static char* arguments[] = {name, nullptr};
  host_locale_ = std::setlocale(LC_ALL, nullptr);
  own_ = std::make_unique<window::GuardedApplication>(count, arguments);
  QApplication::setApplicationName(QStringLiteral("Kolvane"));
  QApplication::setDesktopFileName(QStringLiteral("kolvane"));
  // A caret that blinks would wake the processor twice a second for as long as the window stands open.
  QApplication::setCursorFlashTime(0);
}

}  // namespace kolvane::component
