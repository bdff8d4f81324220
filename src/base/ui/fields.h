#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QTextCharFormat>
#include <vector>

namespace kolvane::base {

/// Characters of a QString.
struct CharacterSpan {
  qsizetype start;
  qsizetype length;
};

/// The characters that Windows-1252 lacks, in their order.
std::vector<CharacterSpan> OutsideSpans(const QString& text);

/// Underlines those of `field` with a red wave, `format` besides, and has `fault` as tool tip and
/// description. To be called after each change of the text, which drops such formats.
void MarkOutside(QLineEdit* field, const QString& fault, QTextCharFormat format = {});

/// The wheel changes `list` only while it has the keyboard focus, and does not give it the focus. A step over
/// it otherwise goes to what it lies on.
void GuardWheel(QComboBox* list);

}  // namespace kolvane::base
