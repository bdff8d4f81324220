#include "script/ui/row_delegate.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCompleter>
#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QPolygonF>
#include <QStandardItemModel>
#include <QTextCharFormat>
#include <QToolTip>
#include <algorithm>
#include <vector>

#include "base/encoding.h"
#include "base/ui/fields.h"
#include "base/ui/qt_text.h"
#include "script/completion.h"
#include "script/texts.h"
#include "script/ui/command_list_model.h"

namespace kolvane::script {
namespace {

using Span = base::CharacterSpan;

QString ProblemOf(const QString& text) {
  const std::string bytes = base::FromQt(text);
  const std::string_view outside = base::OutsideWindows1252(bytes);
  return outside.empty() ? QString() : base::ToQt(texts::NotInCodePage(outside));
}

void MarkOutside(QLineEdit* editor) { base::MarkOutside(editor, ProblemOf(editor->text())); }

// Text copied as a whole line includes its line end.
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

// Readable on any background that the user chooses.
QColor Between(const QColor& background, const QColor& text) {
  constexpr int kBackgroundShare = 3;
  const auto mix = [](int a, int b) { return (kBackgroundShare * a + b) / (kBackgroundShare + 1); };
  return {mix(background.red(), text.red()), mix(background.green(), text.green()),
          mix(background.blue(), text.blue())};
}

bool HasFocus(const QWidget* view) {
  const QWidget* focus = QApplication::focusWidget();
  return view != nullptr && focus != nullptr && (focus == view || view->isAncestorOf(focus));
}

/// The part of a cell in which its text is painted.
QRect TextRect(const QStyleOptionViewItem& option) {
  const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
  const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, option.widget) + 1;
  return style->subElementRect(QStyle::SE_ItemViewItemText, &option, option.widget).adjusted(margin, 0, 0, 0);
}

constexpr int kIndentSpaces = 2;
/// Characters of a row in a cell; no screen has room for more.
constexpr qsizetype kMaxShown = 2000;
constexpr QColor kHintColor(200, 120, 0);

/// The spaces shown before a row that are not part of it.
QString Indentation(const QModelIndex& index) {
  return QString(kIndentSpaces * index.data(CommandListModel::kIndentRole).toInt(), QLatin1Char(' '));
}

/// The rectangle of `span` in the cell's text as shown; null if the cell ends before it.
QRect SpanRect(const QStyleOptionViewItem& option, const Span& span) {
  const QRect text = TextRect(option);
  const int left = text.left() + option.fontMetrics.horizontalAdvance(option.text.left(span.start));
  if (left > text.right()) return {};
  const int width = option.fontMetrics.horizontalAdvance(option.text.mid(span.start, span.length));
  return {left, text.top(), width, text.height()};
}

/// A red disc for a breakpoint, and on it an arrow for the running row or a cross for a failed one.
void PaintMarks(QPainter* painter, const QRect& cell, int marks) {
  if (marks == 0) return;
  const double side = std::min(cell.width(), cell.height()) - 5.0;
  QRectF box(0, 0, side, side);
  box.moveCenter(QRectF(cell).center());
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setPen(Qt::NoPen);
  if ((marks & CommandListModel::kBreakpointMark) != 0) {
    painter->setBrush(QColor(200, 30, 30));
    painter->drawEllipse(box);
  }
  const QRectF inner = box.adjusted(side / 5, side / 5, -side / 5, -side / 5);
  if ((marks & CommandListModel::kRunningMark) != 0) {
    painter->setBrush(QColor(255, 215, 0));
    painter->setPen(QColor(60, 60, 60));
    painter->drawPolygon(
        QPolygonF({inner.topLeft(), {inner.right(), inner.center().y()}, inner.bottomLeft()}));
  }
  if ((marks & CommandListModel::kErrorMark) != 0) {
    painter->setPen(
        QPen((marks & CommandListModel::kBreakpointMark) != 0 ? QColor(Qt::white) : QColor(200, 30, 30), 2));
    painter->drawLine(inner.topLeft(), inner.bottomRight());
    painter->drawLine(inner.bottomLeft(), inner.topRight());
  }
  painter->restore();
}

/// Where bytes `range` of the UTF-8 text are in `text`, which may have only the first of them.
Span SpanOf(const QString& text, pane::PaneRange range) {
  const QByteArray bytes = text.toUtf8();
  const auto units = [&bytes](std::size_t to) {
    return QString::fromUtf8(bytes.first(std::min(static_cast<qsizetype>(to), bytes.size()))).size();
  };
  return {units(range.begin), units(range.end) - units(range.begin)};
}

}  // namespace

void RowDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (!option->text.isEmpty()) option->text = Indentation(index) + option->text.left(kMaxShown);
  if (index.data(Qt::BackgroundRole).isValid()) option->state &= ~QStyle::State_Selected;
  if (HasFocus(option->widget)) return;
  const QColor text = option->palette.color(QPalette::Text);
  option->palette.setColor(QPalette::Highlight, Between(option->palette.color(QPalette::Base), text));
  option->palette.setColor(QPalette::HighlightedText, text);
}

void RowDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  if (index.column() == CommandListModel::kMarkerColumn)
    return PaintMarks(painter, option.rect, index.data(CommandListModel::kMarkRole).toInt());
  QStyleOptionViewItem shown = option;
  initStyleOption(&shown, index);
  if (shown.text.isEmpty()) return;
  painter->save();
  painter->setClipRect(TextRect(shown));
  if (hits_) PaintHits(painter, shown, index);
  const bool highlighted = index.data(Qt::BackgroundRole).isValid();
  const QColor own = shown.palette.color(QPalette::Text);
  for (const Span& span : base::OutsideSpans(shown.text)) {
    const QRect rect = SpanRect(shown, span);
    if (rect.isNull()) break;
    Underline(painter, rect, highlighted ? own : QColor(Qt::red));
  }
  const int finding = index.data(CommandListModel::kFindingRole).toInt();
  const qsizetype indent = Indentation(index).size();
  const QColor color = finding == CommandListModel::kErrorFound ? QColor(Qt::red) : kHintColor;
  if (finding != CommandListModel::kNoFinding)
    Underline(painter, SpanRect(shown, {indent, shown.text.size() - indent}), highlighted ? own : color);
  painter->restore();
}

// Painted over the text, because the style has already painted the background.
void RowDelegate::PaintHits(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  constexpr QColor kHit(255, 200, 0, 90);
  constexpr QColor kCurrent(255, 120, 0, 140);
  const QString indent = Indentation(index);
  for (const RowHit& hit : hits_(index.row() + 1)) {
    Span span = SpanOf(option.text.mid(indent.size()), hit.range);
    span.start += indent.size();
    const QRect rect = SpanRect(option, span);
    if (rect.isNull()) break;
    painter->fillRect(rect, hit.current ? kCurrent : kHit);
  }
}

QWidget* RowDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
  QWidget* widget = QStyledItemDelegate::createEditor(parent, option, index);
  auto* editor = qobject_cast<QLineEdit*>(widget);
  if (editor == nullptr) return widget;
  base::TakeAnyLength(editor);
  editor->setAccessibleName(base::ToQt(texts::RowName(index.row() + 1)));
  const auto* model = qobject_cast<const CommandListModel*>(index.model());
  if (model != nullptr) AddCompletion(editor, model->list());
  // Queued, so that an input method that inserted the text sets its own formats first.
  connect(
      editor, &QLineEdit::textChanged, editor, [this, editor] { UpdateLook(editor); }, Qt::QueuedConnection);
  return editor;
}

void RowDelegate::AddCompletion(QLineEdit* editor, const CommandList& list) const {
  auto* completer = new QCompleter(new QStandardItemModel(editor), editor);
  completer->setWidget(editor);
  completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
  completer->setCompletionRole(Qt::UserRole);
  const auto offer = [editor, completer, &list] {
    auto* model = static_cast<QStandardItemModel*>(completer->model());
    model->clear();
    for (const Completion& each : Completions(base::FromQt(editor->text()), list)) {
      auto* item = new QStandardItem(base::ToQt(each.shown));
      item->setData(base::ToQt(each.row), Qt::UserRole);
      model->appendRow(item);
    }
    if (model->rowCount() == 0) return completer->popup()->hide();
    completer->complete();
    completer->popup()->setCurrentIndex({});
  };
  connect(editor, &QLineEdit::textEdited, completer, offer);
  connect(completer, qOverload<const QString&>(&QCompleter::activated), editor,
          [editor, offer](const QString& row) {
            editor->setText(row);
            offer();
          });
  // Enter commits the row if nothing is chosen from the list, as it does without the list.
  connect(editor, &QLineEdit::returnPressed, completer, [this, editor, completer] {
    if (!completer->popup()->isVisible() || completer->popup()->currentIndex().isValid()) return;
    completer->popup()->hide();
    auto* delegate = const_cast<RowDelegate*>(this);
    Q_EMIT delegate->commitData(editor);
    Q_EMIT delegate->closeEditor(editor, SubmitModelCache);
  });
}

void RowDelegate::UpdateLook(QLineEdit* editor) const {
  if (DropLastLineEnd(editor)) return;
  MarkOutside(editor);
  if (HasSeveralLines(editor->text())) Q_EMIT SeveralLines();
}

bool RowDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                            const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  const QString text = index.data(Qt::ToolTipRole).toString();
  const bool cut = sizeHint(option, index).width() > option.rect.width();
  const bool marked = index.column() == CommandListModel::kMarkerColumn && !text.isEmpty();
  const bool failed =
      !index.siblingAtColumn(CommandListModel::kMarkerColumn).data(Qt::ToolTipRole).toString().isEmpty();
  const bool wanted = cut || marked || failed || !ProblemOf(index.data().toString()).isEmpty() ||
                      index.data(CommandListModel::kFindingRole).toInt() != CommandListModel::kNoFinding;
  // A command may look like a tag.
  const QString lines = text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
  const QString shown = QStringLiteral("<qt>%1</qt>").arg(lines);
  QToolTip::showText(event->globalPos(), wanted ? shown : QString(), view);
  return true;
}

}  // namespace kolvane::script
