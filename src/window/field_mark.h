#pragma once

#include <QLineEdit>

namespace kolvane::window {

/// Marks `field` as one whose text cannot be used, with `fault` as its tool tip and description; an empty one
/// takes the mark away.
void MarkField(QLineEdit* field, const QString& fault);

/// Underlines in red the characters of `field` that Windows-1252 lacks, and names the first one in the
/// field's tool tip and description. To be called after each change of the text, which takes such marks away.
void MarkOutside(QLineEdit* field);

}  // namespace kolvane::window
