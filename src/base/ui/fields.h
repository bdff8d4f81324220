#pragma once

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTextCharFormat>
#include <vector>

namespace kolvane::base {

/// A range of characters of a QString.
struct CharacterSpan {
  qsizetype start;
  qsizetype length;
};

/// The characters outside Windows-1252, in order.
std::vector<CharacterSpan> OutsideSpans(const QString& text);

/// Underlines those of `field` with a red wave, in `format`, and sets `fault` as tool tip and accessible
/// description; an empty `fault` removes them. Call it after each change of the text, which drops such
/// formats.
void MarkOutside(QLineEdit* field, const QString& fault, QTextCharFormat format = {});

/// The parent of `object`; of the list of a field's completions, which has none, the field.
const QObject* OwnerOf(const QObject* object);

/// Qt cuts longer texts off without a word, pasted ones too; `field` takes them.
void TakeAnyLength(QLineEdit* field);

/// The wheel changes `list` only while it has the keyboard focus, and does not give it the focus. Otherwise a
/// wheel step goes to the parent widget.
void GuardWheel(QComboBox* list);

/// Whether the key is Enter, of the main block or of the keypad.
inline bool IsEnter(const QKeyEvent& event) {
  return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

}  // namespace kolvane::base
