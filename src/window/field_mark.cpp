#include "window/field_mark.h"

#include <QTextCharFormat>
#include <QVariant>

#include "base/encoding.h"
#include "base/ui/fields.h"
#include "base/ui/qt_text.h"
#include "terminal/texts.h"

namespace kolvane::window {
namespace {

constexpr char kOriginalTip[] = "usualToolTip";

// As red as possible while the text stays readable, on a light and on a dark background.
QColor Reddened(const QColor& background) {
  constexpr int kParts = 4;
  constexpr int kRed = 255;
  const auto mix = [](int value, int share) { return (value * (kParts - 1) + share) / kParts; };
  return QColor(mix(background.red(), kRed), mix(background.green(), 0), mix(background.blue(), 0));
}

}  // namespace

void MarkField(QLineEdit* field, const QString& fault) {
  if (!field->property(kOriginalTip).isValid()) field->setProperty(kOriginalTip, field->toolTip());
  field->setAccessibleDescription(fault);
  field->setToolTip(fault.isEmpty() ? field->property(kOriginalTip).toString() : fault);
  field->setPalette(QPalette());
  if (fault.isEmpty()) return;
  QPalette marked = field->palette();
  marked.setColor(QPalette::Base, Reddened(marked.color(QPalette::Base)));
  field->setPalette(marked);
}

void MarkUnsendable(QLineEdit* field, bool utf8) {
  const std::string text = base::FromQt(field->text());
  const std::string_view outside = base::UnsendableCharacter(text, utf8);
  const bool marked = !field->toolTip().isEmpty();
  if (outside.empty() && !marked) return;
  QTextCharFormat red;
  red.setForeground(Qt::red);
  base::MarkOutside(field, outside.empty() ? QString() : base::ToQt(terminal::texts::NotSendable(outside)),
                    red);
}

}  // namespace kolvane::window
