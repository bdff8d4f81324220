#include "window/message_prompt.h"

#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTextBoundaryFinder>
#include <algorithm>
#include <new>
#include <utility>

#include "base/runtime_error.h"
#include "base/ui/qt_text.h"
#include "help/topics.h"
#include "help/ui/help_key.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

// Calls `use` with each part of the text between two boundaries.
template <typename Use>
void ForEachPart(const QString& text, QTextBoundaryFinder::BoundaryType type, Use use) {
  QTextBoundaryFinder finder(type, text);
  for (qsizetype start = 0, end = finder.toNextBoundary(); end > start;
       start = end, end = finder.toNextBoundary())
    use(text.mid(start, end - start));
}

// The text with possible line breaks inserted into words that are wider than a line.
QString Breakable(const QString& text, const QFontMetrics& metrics, int line_width) {
  constexpr QChar kZeroWidthSpace(0x200B);
  QString breakable;
  ForEachPart(text, QTextBoundaryFinder::Line, [&](const QString& word) {
    if (metrics.horizontalAdvance(word) <= line_width) {
      breakable += word;
    } else {
      ForEachPart(word, QTextBoundaryFinder::Grapheme,
                  [&](const QString& character) { breakable += character + kZeroWidthSpace; });
    }
  });
  return breakable;
}

// A box breaks lines only between words and cuts off a wider word, such as a path. Then a label replaces the
// box's own, which keeps the text for copying.
void WrapLongWords(QMessageBox& box) {
  auto* own = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
  const int line_width =
      std::min(box.fontMetrics().averageCharWidth() * 60, box.screen()->availableSize().width() / 2);
  const QString text = Breakable(box.text(), box.fontMetrics(), line_width);
  if (own == nullptr || text == box.text()) return;
  auto* label = new QLabel(text, &box);
  label->setTextFormat(Qt::PlainText);
  label->setAccessibleName(box.text());
  label->setWordWrap(true);
  label->setIndent(own->indent());
  label->setContentsMargins(own->contentsMargins());
  label->setAlignment(own->alignment());
  label->setMinimumWidth(line_width + 2 * label->fontMetrics().averageCharWidth());
  delete box.layout()->replaceWidget(own, label);
  own->hide();
}

// Otherwise Esc would do nothing with a second button.
void KeepOkOnEsc(QMessageBox& box) {
  box.setEscapeButton(QMessageBox::Ok);
  box.setDefaultButton(QMessageBox::Ok);
}

void PrepareBox(QMessageBox& box) {
  box.setObjectName(QStringLiteral("MessageBox"));
  box.setTextFormat(Qt::PlainText);
  WrapLongWords(box);
  // In a host without a visible window it would be the last one, at whose end Qt ends the host.
  box.setAttribute(Qt::WA_QuitOnClose, false);
}

QPushButton* AddStopButton(QMessageBox& box) {
  QPushButton* stop = box.addButton(base::ToQt(texts::kEndRun), QMessageBox::DestructiveRole);
  stop->setObjectName(QStringLiteral("EndRun"));
  return stop;
}

}  // namespace

void MessagePrompt::Show(Kind kind, std::string_view text, std::string_view words) {
  if (dismissed_) return;
  links_.before_message();
  QMessageBox box(kind == Kind::kMessage ? QMessageBox::NoIcon : QMessageBox::Critical,
                  base::ToQt(texts::kProgram), base::ToQt(text), QMessageBox::Ok, parent_);
  box.setInformativeText(base::ToQt(words));
  PrepareBox(box);
  if (parent_ != nullptr && help::StatusIn(text) != 0) help::AddHelpButton(box);
  const QPushButton* stop = kind == Kind::kError && links_.is_running() ? AddStopButton(box) : nullptr;
  KeepOkOnEsc(box);
  box.exec();
  if (stop != nullptr && box.clickedButton() == stop) links_.stop();
}

void MessagePrompt::ShowErrorBeside(QWidget* window, std::string_view text) {
  if (Unattended()) return close_->Messages().ShowError(text);
  if (dismissed_) return;
  auto* box = new QMessageBox(QMessageBox::Critical, base::ToQt(texts::kProgram), base::ToQt(text),
                              QMessageBox::Ok, window);
  PrepareBox(*box);
  KeepOkOnEsc(*box);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::NonModal);
  box->show();
}

void MessagePrompt::ShowError(std::string_view text) {
  if (Unattended()) return close_->Messages().ShowError(text);
  Show(Kind::kError, text);
}

void MessagePrompt::ShowFailure(std::string_view text, std::string_view words) {
  if (Unattended()) return close_->Messages().ShowFailure(text, words);
  Show(Kind::kError, text, words);
}

void MessagePrompt::ShowListError(std::string_view text, std::string_view error) {
  if (Unattended()) return close_->Messages().ShowListError(text, error);
  Show(Kind::kListError, text);
}

void MessagePrompt::ShowMessage(std::string_view text) {
  if (Unattended()) return close_->Messages().ShowMessage(text);
  Show(Kind::kMessage, text);
}

void MessagePrompt::Guard(const std::function<void()>& event) {
  try {
    event();
  } catch (const base::RuntimeError& error) {
    ShowError(error.what());
  } catch (const std::bad_alloc&) {
    ShowError(texts::kNoMemory);
  }
  links_.after_event();
}

void MessagePrompt::OnTrigger(QAction* action, std::function<void()> event, While when) {
  QObject::connect(action, &QAction::triggered, action, [this, action, event = std::move(event), when] {
    if (when == While::kAlways || !links_.is_waiting()) return Guard(event);
    // It has been pressed already.
    if (action->isCheckable()) action->toggle();
  });
}

}  // namespace kolvane::window
