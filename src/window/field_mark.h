#pragma once

#include <QLineEdit>

namespace kolvane::window {

/// Marks `field` as one whose text cannot be used, with `fault` as its tool tip and description; an empty
/// `fault` removes the mark.
void MarkField(QLineEdit* field, const QString& fault);

/// Shows in red the characters of `field` that cannot be sent, which are those outside Windows-1252 unless
/// the device speaks UTF-8, and names the first one in the field's tool tip and description. To be called
/// after each change of the text, which removes such marks, and of `utf8`.
void MarkUnsendable(QLineEdit* field, bool utf8);

}  // namespace kolvane::window
