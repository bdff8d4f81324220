#pragma once

#include <gtest/gtest.h>

#include <QStringList>

namespace kolvane::gui {

/// Each letter after "&" occurs only once in the texts, and there is at least one.
inline void ExpectOneLetterEach(const QStringList& texts) {
  QString letters;
  for (const QString& text : texts) {
    if (!text.contains(u'&')) continue;
    const QChar letter = text.at(text.indexOf(u'&') + 1).toUpper();
    EXPECT_FALSE(letters.contains(letter)) << text.toStdString();
    letters += letter;
  }
  EXPECT_FALSE(letters.isEmpty());
}

}  // namespace kolvane::gui
