#pragma once

#include <QFont>
#include <QString>
#include <string_view>

#include "base/encoding.h"
#include "base/ui/qt_text.h"

namespace kolvane::inspect {

inline QString FromBytes(std::string_view windows1252) {
  return base::ToQt(base::FromWindows1252(windows1252));
}

/// The font for everything that shows bytes; without Courier New another fixed-pitch font.
inline QFont ByteFont(int points) {
  QFont font(QStringLiteral("Courier New"), points);
  font.setStyleHint(QFont::Monospace);
  font.setFixedPitch(true);
  return font;
}

}  // namespace kolvane::inspect
