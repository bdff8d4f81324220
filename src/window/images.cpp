#include "window/images.h"

#include <QString>

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

QIcon Icon(const char* name) {
  NeedIcons();
  return QIcon(new SvgIconEngine(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name))));
}

QIcon ImageIcon(int number) {
  switch (number) {
    case image::kRecordOff:
      return Icon("record-off");
    case image::kRecordOn:
      return Icon("record-on");
    case image::kConnected:
      return Icon("disconnect");
    case image::kNotConnected:
      return Icon("connect");
    case image::kLogRecording:
      return Icon("log-record-on");
    case image::kLogNotRecording:
      return Icon("log-record-off");
    default:
      return {};
  }
}

}  // namespace kolvane::window
