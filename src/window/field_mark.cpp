#include "window/field_mark.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QTextCharFormat>
#include <QVariant>

#include "base/encoding.h"
#include "base/ui/text.h"
#include "terminal/texts.h"

namespace kolvane::window {
namespace {

constexpr char kUsualTip[] = "usualToolTip";

// As red as can be while the text stays readable, on a light and on a dark ground.
QColor Reddened(const QColor& ground) {
  constexpr int kParts = 4;
  constexpr int kRed = 255;
  const auto mix = [](int value, int share) { return (value * (kParts - 1) + share) / kParts; };
  return QColor(mix(ground.red(), kRed), mix(ground.green(), 0), mix(ground.blue(), 0));
}

qsizetype Units(std::string_view text) { return base::ToQt(text).size(); }

// The characters that the code page lacks, as an input method would mark them: a line edit takes formats from
// nobody else.
QList<QInputMethodEvent::Attribute> OutsideMarks(std::string_view text, int cursor) {
  QTextCharFormat wave;
  wave.setForeground(Qt::red);
  wave.setUnderlineStyle(QTextCharFormat::WaveUnderline);
  wave.setUnderlineColor(Qt::red);
  QList<QInputMethodEvent::Attribute> marks;
  qsizetype start = 0;
  while (const auto at = base::FirstOutsideWindows1252(text)) {
    const std::string_view character = base::OutsideWindows1252(text);
    start += Units(text.substr(0, *at));
    const qsizetype length = Units(character);
    marks.append(
        {QInputMethodEvent::TextFormat, static_cast<int>(start) - cursor, static_cast<int>(length), wave});
    start += length;
    text.remove_prefix(*at + character.size());
  }
  return marks;
}

}  // namespace

void MarkField(QLineEdit* field, const QString& fault) {
  if (!field->property(kUsualTip).isValid()) field->setProperty(kUsualTip, field->toolTip());
  field->setAccessibleDescription(fault);
  field->setToolTip(fault.isEmpty() ? field->property(kUsualTip).toString() : fault);
  field->setPalette(QPalette());
  if (fault.isEmpty()) return;
  QPalette marked = field->palette();
  marked.setColor(QPalette::Base, Reddened(marked.color(QPalette::Base)));
  field->setPalette(marked);
}

void MarkOutside(QLineEdit* field) {
  const std::string text = base::FromQt(field->text());
  const std::string_view outside = base::OutsideWindows1252(text);
  const bool marked = !field->toolTip().isEmpty();
  if (outside.empty() && !marked) return;
  QInputMethodEvent event({}, OutsideMarks(text, field->cursorPosition()));
  QApplication::sendEvent(field, &event);
  const QString fault = outside.empty() ? QString() : base::ToQt(terminal::texts::NotSendable(outside));
  field->setToolTip(fault);
  field->setAccessibleDescription(fault);
}

}  // namespace kolvane::window
