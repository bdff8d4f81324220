#include "window/pane_target.h"

#include <QInputDialog>
#include <cerrno>

#include "base/codepage.h"
#include "base/replace_file.h"
#include "terminal/ui/output_pane_paint.h"
#include "window/caption.h"
#include "window/file_dialogs.h"
#include "window/look.h"
#include "window/pane_lines.h"
#include "window/print_command.h"
#include "window/text.h"
#include "window/text_file.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

constexpr int kCommentColumns = 70;

}  // namespace

void PaneTarget::ShowLook() {
  pane_->setFont(FontOf(look_));
  pane_->setTextColor(terminal::ToQColor(look_.font_color));
  pane_->setBackgroundColor(terminal::ToQColor(look_.back_color));
}

void PaneTarget::ClearAll() {
  pane_->deleteAll();
  pane_->SetSelectionColor(terminal::kNoColor);
}

void PaneTarget::Save() {
  const auto name = AskSaveName(window_, SaveMode::kTerminal);
  if (!name) return;
  const std::string bytes = base::ToWindows1252(pane_->text().Text("\r\n")) + "\r\n";
  if (const int error = base::ReplaceFile(*name, bytes)) prompt_.ShowError(texts::NotWritten(*name, error));
}

void PaneTarget::Open() {
  if (const auto name = AskOpenName(window_, OpenMode::kTextFile)) Load(*name);
}

void PaneTarget::Load(const std::string& name) {
  Progress progress(window_, ToQt(texts::kLoading));
  terminal::PaneText text;
  const int error = ReadTextFile(
      name, text, [&](std::size_t done, std::size_t whole) { return progress.Advance(done, whole); });
  if (error == 0) return pane_->SetText(std::move(text));
  if (error != ECANCELED) prompt_.ShowError(texts::NotRead(name, error));
}

void PaneTarget::Print() {
  const PrintStyle style{CaptionWithoutMark(*window_), pane_->font(), pane_->textColor()};
  const terminal::PaneStore& store = pane_->text().store();
  const terminal::PaneRange selection = pane_->text().Selection();
  const PaneLines all(store, {0, store.Length()});
  const PaneLines selected(store, selection);
  PrintLines(window_, prompt_, style, all, selection.empty() ? nullptr : &selected);
}

void PaneTarget::ChooseFont() {
  if (window::ChooseFont(window_, look_)) ShowLook();
}

void PaneTarget::ChooseBackColor() {
  if (window::ChooseBackColor(window_, look_)) ShowLook();
}

void PaneTarget::InsertComment() {
  QInputDialog dialog(window_);
  dialog.setObjectName(QStringLiteral("CommentDialog"));
  dialog.setWindowTitle(QStringLiteral("Kommentar einfügen"));
  dialog.setLabelText(QStringLiteral("Kommentar:"));
  dialog.resize(dialog.fontMetrics().averageCharWidth() * kCommentColumns, dialog.sizeHint().height());
  if (dialog.exec() == QDialog::Accepted && !dialog.textValue().isEmpty())
    pane_->InsertComment(dialog.textValue());
}

}  // namespace kolvane::window
