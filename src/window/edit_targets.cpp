#include "window/edit_targets.h"

#include <QInputDialog>
#include <cerrno>

#include "base/encoding.h"
#include "base/files.h"
#include "base/ui/qt_look.h"
#include "base/ui/qt_text.h"
#include "window/file_dialogs.h"
#include "window/print_page.h"
#include "window/printing.h"
#include "window/progress.h"
#include "window/status_bars.h"
#include "window/text_file.h"
#include "window/texts.h"

namespace kolvane::window {
namespace {

// Rows of a command list in the colours of their kinds.
class ListLines final : public PrintSource {
 public:
  ListLines(const script::CommandList& list, int first, int last) : list_(list), first_(first), last_(last) {}

  std::size_t LineCount() const override {
    return last_ < first_ ? 0 : static_cast<std::size_t>(last_ - first_ + 1);
  }

  PrintLine Line(std::size_t line) const override {
    const int row = first_ + static_cast<int>(line);
    const QString text = base::ToQt(list_.Text(row));
    return {text, {{0, static_cast<int>(text.size()), base::ToQColor(list_.TextColor(row))}}};
  }

 private:
  const script::CommandList& list_;
  int first_;
  int last_;
};

}  // namespace

void GridTarget::ShowLook() {
  grid_->ShowLook(base::FontOf(look_), look_.font_color, base::ToQColor(look_.back_color));
}

void GridTarget::Print() {
  const script::CommandList& list = grid_->list();
  const auto [first, last] = grid_->SelectedRows();
  const ListLines all(list, 1, list.LastUsedRow());
  const ListLines selected(list, first, last);
  const PrintStyle style{CaptionWithoutPlaceholder(*window_), grid_->font(),
                         base::ToQColor(look_.font_color)};
  // A single selected row is only the list's current row.
  PrintLines(window_, prompt_, style, all, last > first ? &selected : nullptr);
}

void GridTarget::ChooseFont() {
  if (base::ChooseFont(window_, look_)) ShowLook();
}

void GridTarget::ChooseBackColor() {
  if (base::ChooseBackColor(window_, look_)) ShowLook();
}

namespace {

constexpr int kCommentColumns = 70;

}  // namespace

void PaneTarget::ShowLook() {
  pane_->SetBaseFont(base::FontOf(look_));
  pane_->setTextColor(base::ToQColor(look_.font_color));
  pane_->setBackgroundColor(base::ToQColor(look_.back_color));
}

void PaneTarget::ClearAll() {
  pane_->deleteAll();
  pane_->SetSelectionColor(base::kNoColor);
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
  Progress progress(window_, base::ToQt(texts::kLoading));
  pane::PaneText text;
  const int error = ReadTextFile(
      name, text, [&](std::size_t done, std::size_t whole) { return progress.Advance(done, whole); });
  if (error == 0) return pane_->SetText(std::move(text));
  if (error != ECANCELED) prompt_.ShowError(texts::NotRead(name, error));
}

void PaneTarget::Print() {
  const PrintStyle style{CaptionWithoutPlaceholder(*window_), base::FontOf(look_), pane_->textColor()};
  const pane::PaneStore& store = pane_->text().store();
  const pane::PaneRange selection = pane_->text().Selection();
  const PaneLines all(store, {0, store.Length()});
  const PaneLines selected(store, selection);
  PrintLines(window_, prompt_, style, all, selection.empty() ? nullptr : &selected);
}

void PaneTarget::ChooseFont() {
  if (base::ChooseFont(window_, look_)) ShowLook();
}

void PaneTarget::ChooseBackColor() {
  if (base::ChooseBackColor(window_, look_)) ShowLook();
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
