#include "component/application.h"

#include <xcb/xcb.h>

#include <QDir>
#include <QLibraryInfo>
#include <algorithm>
#include <clocale>
#include <filesystem>
#include <stdexcept>
#include <system_error>

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

// Whether it answers stays open: the component makes no connections of its own but to an X server.
bool CompositorIsThere() {
  if (qEnvironmentVariableIsSet("WAYLAND_SOCKET")) return true;
  const std::filesystem::path name = qgetenv("WAYLAND_DISPLAY").toStdString();
  std::error_code unknown;
  return !name.empty() &&
         std::filesystem::is_socket(qgetenv("XDG_RUNTIME_DIR").toStdString() / name, unknown);
}

// It comes in a package of its own. A host may have brought its plugins along to where nobody else looks.
bool WaylandIsInstalled() {
  const QDir platforms(QLibraryInfo::path(QLibraryInfo::PluginsPath) + QStringLiteral("/platforms"));
  return !platforms.exists() || !platforms.entryList({QStringLiteral("libqwayland*")}).isEmpty();
}

bool IsUsable(const QByteArray& platform) {
  if (platform.startsWith("xcb")) return XServerAnswers();
  if (platform.startsWith("wayland")) return WaylandIsInstalled() && CompositorIsThere();
  return true;
}

// Qt takes the first platform that works, of those that the user names or of these two.
bool HasDisplay() {
  const QByteArray named = qgetenv("QT_QPA_PLATFORM");
  const QList<QByteArray> platforms = (named.isEmpty() ? QByteArray("wayland;xcb") : named).split(';');
  return std::any_of(platforms.begin(), platforms.end(), IsUsable);
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
