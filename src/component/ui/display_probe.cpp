#include "component/ui/display_probe.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QPluginLoader>
#include <QStringList>
#include <algorithm>
#include <filesystem>
#include <system_error>

#include "kolvane/MainClass.h"

namespace kolvane::component {
namespace {

namespace fs = std::filesystem;

// A server about to reset itself disconnects a client just accepted; the next one gets in.
constexpr int kXAttempts = 3;

// Kernel major numbers of character devices.
constexpr unsigned kFramebuffer = 29;
constexpr unsigned kGraphicsCard = 226;

bool IsWayland(const QByteArray& platform) { return platform.toLower().startsWith("wayland"); }

bool IsX(const QByteArray& platform) { return platform.split(':').front().toLower() == "xcb"; }

bool NeedsServer(const QByteArray& platform) { return IsWayland(platform) || IsX(platform); }

// It may still not respond: the component opens no connection except to an X server.
bool HasCompositor() {
  if (qEnvironmentVariableIsSet("WAYLAND_SOCKET")) return true;
  const fs::path name = qgetenv("WAYLAND_DISPLAY").toStdString();
  std::error_code unknown;
  return !name.empty() && fs::is_socket(qgetenv("XDG_RUNTIME_DIR").toStdString() / name, unknown);
}

bool IsDevice(const fs::path& path, unsigned kind) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISCHR(status.st_mode) && major(status.st_rdev) == kind;
}

bool HasFramebuffer(const QList<QByteArray>& arguments) {
  QByteArray device = "/dev/fb0";
  for (const QByteArray& argument : arguments) {
    if (argument.startsWith("fb=")) device = argument.mid(3);
  }
  return IsDevice(device.toStdString(), kFramebuffer);
}

bool HasGraphicsCard() {
  std::error_code none;
  const fs::directory_iterator cards("/dev/dri", none);
  return std::any_of(begin(cards), end(cards),
                     [](const auto& card) { return IsDevice(card, kGraphicsCard); });
}

// Where Qt looks for platform plug-ins; it adds the host's own folder once there is an application.
QStringList PlatformFolders() {
  QStringList folders;
  const QString own = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).path();
  for (const QString& folder : QCoreApplication::libraryPaths() + QStringList{own})
    folders << folder + QStringLiteral("/platforms");
  folders << qEnvironmentVariable("QT_QPA_PLATFORM_PLUGIN_PATH").split(u':', Qt::SkipEmptyParts);
  return folders;
}

bool Offers(const QPluginLoader& plugin, const QString& platform) {
  const QJsonObject data = plugin.metaData().value(QStringLiteral("MetaData")).toObject();
  const QJsonArray keys = data.value(QStringLiteral("Keys")).toArray();
  return std::any_of(keys.begin(), keys.end(), [&](const QJsonValue& key) {
    return key.toString().compare(platform, Qt::CaseInsensitive) == 0;
  });
}

// The plug-ins of a folder. Those of Qt are named after their platform, so these come first.
QStringList Plugins(const QDir& folder, const QString& platform) {
  QStringList names = folder.entryList({QStringLiteral("*.so")}, QDir::Files);
  std::stable_partition(names.begin(), names.end(),
                        [&](const auto& name) { return name.contains(platform); });
  return names;
}

// Loading the plug-in tests its dependencies; Qt loads the same one next. If no folder exists, the host may
// have its plug-ins elsewhere.
bool IsInstalled(const QString& platform) {
  bool any_folder = false;
  for (const QString& name : PlatformFolders()) {
    const QDir folder(name);
    any_folder |= folder.exists();
    for (const QString& file : Plugins(folder, platform)) {
      QPluginLoader plugin(folder.filePath(file));
      if (Offers(plugin, platform)) return plugin.load();
    }
  }
  return !any_folder;
}

// A running compositor that Qt cannot use.
bool IsUnreachableCompositor(const QByteArray& platform) {
  return IsWayland(platform) && HasCompositor() && !IsInstalled(QStringLiteral("wayland"));
}

}  // namespace

// Qt takes the first working platform of those named by the user, or of these two.
DisplayProbe::DisplayProbe() {
  const QByteArray named = qgetenv("QT_QPA_PLATFORM");
  const QList<QByteArray> platforms = (named.isEmpty() ? QByteArray("wayland;xcb") : named).split(';');
  if (std::any_of(platforms.begin(), platforms.end(), [this](const auto& one) { return IsUsable(one); }))
    return;
  if (std::any_of(platforms.begin(), platforms.end(), IsUnreachableCompositor))
    throw NoDisplay(
        "no display: Qt's Wayland plug-in is missing (Debian package qt6-wayland), "
        "and DISPLAY names no X server that answers");
  if (std::any_of(platforms.begin(), platforms.end(), NeedsServer))
    throw NoDisplay("no display: DISPLAY and WAYLAND_DISPLAY name none that answers");
  throw NoDisplay("no display: nothing works of what QT_QPA_PLATFORM names: " + named.toStdString());
}

DisplayProbe::~DisplayProbe() {
  if (x_server_ != nullptr) xcb_disconnect(x_server_);
}

bool DisplayProbe::IsUsable(const QByteArray& platform) {
  const QList<QByteArray> parts = platform.split(':');
  const QByteArray name = parts.front().toLower();
  if (!IsInstalled(QString::fromLatin1(name))) return false;
  if (IsX(platform)) return XServerAnswers();
  if (IsWayland(platform)) return HasCompositor();
  // Without a device to draw on Qt ends the process or crashes.
  if (name == "linuxfb") return HasFramebuffer(parts);
  if (name == "eglfs" || name == "minimalegl" || name == "vkkhrdisplay") return HasGraphicsCard();
  return true;
}

bool DisplayProbe::XServerAnswers() {
  for (int attempt = 0; attempt < kXAttempts; ++attempt) {
    x_server_ = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(x_server_) == 0) return true;
    xcb_disconnect(x_server_);
    x_server_ = nullptr;
  }
  return false;
}

}  // namespace kolvane::component
