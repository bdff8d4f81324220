#include "base/ui/fields.h"

#include <QApplication>
#include <QEvent>
#include <QInputMethodEvent>
#include <limits>

#include "base/encoding.h"
#include "base/ui/qt_text.h"

namespace kolvane::base {
namespace {

class WheelGuard final : public QObject {
 public:
  explicit WheelGuard(QWidget* list) : QObject(list) { list->installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::Wheel || static_cast<QWidget*>(watched)->hasFocus()) return false;
    event->ignore();
    return true;
  }
};

}  // namespace

std::vector<CharacterSpan> OutsideSpans(const QString& text) {
  std::vector<CharacterSpan> spans;
  const std::string bytes = FromQt(text);
  std::string_view rest = bytes;
  qsizetype start = 0;
  while (const auto at = FirstOutsideWindows1252(rest)) {
    const std::string_view character = OutsideWindows1252(rest);
    start += ToQt(rest.substr(0, *at)).size();
    const qsizetype length = ToQt(character).size();
    spans.push_back({start, length});
    start += length;
    rest.remove_prefix(*at + character.size());
  }
  return spans;
}

void MarkOutside(QLineEdit* field, const QString& fault, QTextCharFormat format) {
  format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
  format.setUnderlineColor(Qt::red);
  // A line edit takes formats only from an input method.
  QList<QInputMethodEvent::Attribute> marks;
  const auto spans = fault.isEmpty() ? std::vector<CharacterSpan>() : OutsideSpans(field->text());
  for (const CharacterSpan& span : spans)
    marks.append({QInputMethodEvent::TextFormat, static_cast<int>(span.start) - field->cursorPosition(),
                  static_cast<int>(span.length), format});
  QInputMethodEvent event({}, marks);
  QApplication::sendEvent(field, &event);
  field->setToolTip(fault);
  field->setAccessibleDescription(fault);
}

const QObject* OwnerOf(const QObject* object) {
  const auto* widget = qobject_cast<const QWidget*>(object);
  return object->parent() != nullptr || widget == nullptr ? object->parent() : widget->focusProxy();
}

void TakeAnyLength(QLineEdit* field) { field->setMaxLength(std::numeric_limits<int>::max()); }

void GuardWheel(QComboBox* list) {
  list->setFocusPolicy(Qt::StrongFocus);
  new WheelGuard(list);
}

}  // namespace kolvane::base
