#include "window/images.h"

#include <QString>
#include <algorithm>
#include <array>

#include "window/svg_icon_engine.h"

// Resources of a static library are there only once this was called, outside every namespace.
static void NeedIcons() {
  static const bool once = [] {
    Q_INIT_RESOURCE(icons);
    return true;
  }();
  static_cast<void>(once);
}

namespace kolvane::window {
namespace {

// The toolbars' image list; the first image is number 1. The numbers of buttons that change their image with
// their state are fixed: 14 and 16, 20 and 21, 25 and 28. No button has 26 or 27.
constexpr std::array<std::string_view, 28> kImageList = {
    "save",          "print",      "configure-connection",
    "flush",         "log-open",   "log-close",
    "inspect",       "help",       "list-new",
    "list-open",     "list-save",  "list-print",
    "cut",           "record-off", "copy",
    "record-on",     "paste",      "play",
    "single-step",   "disconnect", "connect",
    "break",         "stop",       "special-commands",
    "log-record-on", "clear",      "scan",
    "log-record-off"};

}  // namespace

QIcon Icon(const char* name) {
  NeedIcons();
  return QIcon(new SvgIconEngine(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name))));
}

QIcon ImageIcon(int number) {
  const bool known = number >= 1 && static_cast<std::size_t>(number) <= kImageList.size();
  return known ? Icon(kImageList[static_cast<std::size_t>(number) - 1].data()) : QIcon();
}

int ImageNumber(std::string_view name) {
  return static_cast<int>(std::ranges::find(kImageList, name) - kImageList.begin()) + 1;
}

}  // namespace kolvane::window
