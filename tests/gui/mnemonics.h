#pragma once

#include <gtest/gtest.h>

#include <QStringList>

namespace kolvane::gui {

/// Each letter after "&" occurs only once in the texts, and there is at least one.
inline void ExpectUniqueMnemonics(const QStringList& texts) {
  QString mnemonics;
  for (const QString& text : texts) {
    if (!text.contains(u'&')) continue;
    const QChar mnemonic = text.at(text.indexOf(u'&') + 1).toUpper();
    EXPECT_FALSE(mnemonics.contains(mnemonic)) << text.toStdString();
    mnemonics += mnemonic;
  }
  EXPECT_FALSE(mnemonics.isEmpty());
}

}  // namespace kolvane::gui
