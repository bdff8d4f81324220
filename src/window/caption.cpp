#include "window/caption.h"

#include "window/text.h"
#include "window/texts.h"

namespace kolvane::window {

QString Caption(std::string_view command_file, std::string_view connection) {
  command_file.remove_prefix(command_file.rfind('/') + 1);
  QString caption = ToQt(texts::kProgram);
  for (const std::string_view part : {command_file, connection}) {
    if (!part.empty()) caption += QStringLiteral(" - ") + ToQt(part);
  }
  return caption;
}

}  // namespace kolvane::window
