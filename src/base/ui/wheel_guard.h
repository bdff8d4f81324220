#pragma once

#include <QComboBox>

namespace kolvane::base {

/// The wheel changes `list` only while it has the keyboard focus, and does not give it the focus. A step over
/// it otherwise goes to what it lies on.
void GuardWheel(QComboBox* list);

}  // namespace kolvane::base
