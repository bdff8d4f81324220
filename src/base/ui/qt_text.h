#pragma once

#include <QColor>
#include <QString>
#include <cstdint>
#include <string>
#include <string_view>

namespace kolvane::base {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string FromQt(const QString& text) { return text.toStdString(); }

inline std::int32_t FromQt(const QColor& color) {
  return color.red() | color.green() << 8 | color.blue() << 16;
}

}  // namespace kolvane::base
