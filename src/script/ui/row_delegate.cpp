#include "script/ui/row_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPainter>
#include <QTextCharFormat>
#include <QToolTip>
#include <vector>

#include "base/encoding.h"
#include "script/texts.h"

namespace kolvane::script {
namespace {

struct Span {
  qsizetype start;
  qsizetype length;
};

std::vector<Span> OutsideSpans(const QString& text) {
  std::vector<Span> spans;
  const std::string bytes = text.toStdString();
  std::string_view rest = bytes;
  qsizetype start = 0;
  while (const auto at = base::FirstOutsideWindows1252(rest)) {
    const std::string_view character = base::OutsideWindows1252(rest);
    start += QString::fromUtf8(rest.data(), static_cast<qsizetype>(*at)).size();
    const qsizetype length =
        QString::fromUtf8(character.data(), static_cast<qsizetype>(character.size())).size();
    spans.push_back({start, length});
    start += length;
    rest.remove_prefix(*at + character.size());
  }
  return spans;
}

QString TroubleOf(const QString& text) {
  const std::string bytes = text.toStdString();
  const std::string_view outside = base::OutsideWindows1252(bytes);
  return outside.empty() ? QString() : QString::fromStdString(texts::NotInCodePage(outside));
}

// A line edit takes formats only from an input method.
void MarkOutside(QLineEdit* editor) {
  QTextCharFormat wave;
  wave.setUnderlineStyle(QTextCharFormat::WaveUnderline);
  wave.setUnderlineColor(Qt::red);
  QList<QInputMethodEvent::Attribute> marks;
  for (const Span& span : OutsideSpans(editor->text()))
    marks.append({QInputMethodEvent::TextFormat, static_cast<int>(span.start) - editor->cursorPosition(),
                  static_cast<int>(span.length), wave});
  QInputMethodEvent event({}, marks);
  QApplication::sendEvent(editor, &event);
  const QString trouble = TroubleOf(editor->text());
  editor->setToolTip(trouble);
  editor->setAccessibleDescription(trouble);
}

// What was copied as a whole line brings its end along.
bool DropLastLineEnd(QLineEdit* editor) {
  QString text = editor->text();
  while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r'))) text.chop(1);
  if (text == editor->text()) return false;
  editor->setText(text);
  return true;
}

bool HasSeveralLines(const QString& text) {
  return text.contains(QLatin1Char('\n')) || text.contains(QLatin1Char('\r'));
}

void Underline(QPainter* painter, const QRect& rect, const QColor& color) {
  painter->setPen(color);
  const int bottom = rect.bottom() - 1;
  for (int x = rect.left(); x < rect.right(); x += 4) {
    painter->drawLine(x, bottom, x + 2, bottom - 2);
    painter->drawLine(x + 2, bottom - 2, x + 4, bottom);
  }
}

// Readable on any ground that the user chooses.
QColor Between(const QColor& ground, const QColor& text) {
  constexpr int kGroundShare = 3;
  const auto mix = [](int a, int b) { return (kGroundShare * a + b) / (kGroundShare + 1); };
  return {mix(ground.red(), text.red()), mix(ground.green(), text.green()), mix(ground.blue(), text.blue())};
}

bool HasFocus(const QWidget* view) {
  const QWidget* focus = QApplication::focusWidget();
  return view != nullptr && focus != nullptr && (focus == view || view->isAncestorOf(focus));
}

}  // namespace

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (index.data(Qt::BackgroundRole).isValid()) option->state &= ~QStyle::State_Selected;
  if (HasFocus(option->widget)) return;
  const QColor text = option->palette.color(QPalette::Text);
  option->palette.setColor(QPalette::Highlight, Between(option->palette.color(QPalette::Base), text));
  option->palette.setColor(QPalette::HighlightedText, text);
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  QStyleOptionViewItem shown = option;
  initStyleOption(&shown, index);
  const std::vector<Span> spans = OutsideSpans(shown.text);
  if (spans.empty()) return;
  const QStyle* style = shown.widget != nullptr ? shown.widget->style() : QApplication::style();
  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &shown, shown.widget) + 1;
  const QRect text = style->subElementRect(QStyle::SE_ItemViewItemText, &shown, shown.widget);
  const bool highlighted = index.data(Qt::BackgroundRole).isValid();
  painter->save();
  painter->setClipRect(text);
  for (const Span& span : spans) {
    const int left = text.left() + margin + shown.fontMetrics.horizontalAdvance(shown.text.left(span.start));
    const int width = shown.fontMetrics.horizontalAdvance(shown.text.mid(span.start, span.length));
    Underline(painter, {left, text.top(), width, text.height()},
              highlighted ? shown.palette.color(QPalette::Text) : QColor(Qt::red));
  }
  painter->restore();
}

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  QWidget* widget = QStyledItemDelegate::createEditor(parent, option, index);
  auto* editor = qobject_cast<QLineEdit*>(widget);
  if (editor == nullptr) return widget;
  editor->setAccessibleName(QString::fromStdString(texts::RowName(index.row() + 1)));
  // Later, as an input method that has put the text in sets formats of its own first.
  connect(
      editor, &QLineEdit::textChanged, editor, [this, editor] { LookAt(editor); }, Qt::QueuedConnection);
  return editor;
}

void RowDelegate::LookAt(QLineEdit* editor) const {
  if (DropLastLineEnd(editor)) return;
  MarkOutside(editor);
  if (HasSeveralLines(editor->text())) Q_EMIT SeveralLines();
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  const QString text = index.data(Qt::ToolTipRole).toString();
  const bool cut = sizeHint(option, index).width() > option.rect.width();
  const bool wanted = cut || !TroubleOf(index.data().toString()).isEmpty();
  // A command may look like a tag.
  const QString lines = text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
  const QString shown = QStringLiteral("<qt>%1</qt>").arg(lines);
  QToolTip::showText(event->globalPos(), wanted ? shown : QString(), view);
  return true;
}

}  // namespace kolvane::script
