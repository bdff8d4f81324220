#include "window/caption.h"

#include "window/text.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr QLatin1String kMark("[*]");
constexpr QLatin1String kNoMark("[*][*]");  // how a caption that holds these characters has them

void Append(QString& caption, std::string_view part) {
  if (!part.empty()) caption += QStringLiteral(" - ") + ToQt(part).replace(kMark, kNoMark);
}

}  // namespace

QString Caption(std::string_view command_file, std::string_view connection, bool modified) {
  command_file.remove_prefix(command_file.rfind('/') + 1);
  QString caption = ToQt(texts::kProgram);
  Append(caption, command_file);
  if (modified) caption += kMark;
  Append(caption, connection);
  return caption;
}

QString CaptionWithoutMark(const QWidget& window) {
  QStringList parts = window.windowTitle().split(kNoMark);
  for (QString& part : parts) part.remove(kMark);
  return parts.join(kMark);
}

}  // namespace kolvane::window
