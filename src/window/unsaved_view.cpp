#include "window/unsaved_view.h"

#include <QAccessible>
#include <utility>

#include "base/clock.h"
#include "base/ui/buttons.h"
#include "base/ui/qt_text.h"
#include "script/texts.h"
#include "window/flow_layout.h"
#include "window/status_bars.h"

namespace kolvane::window {
namespace {

constexpr int kOfferGap = 3;

}  // namespace

UnsavedView::UnsavedView(script::CommandGrid* grid, const std::string& folder, MessagePrompt& prompt,
                         QWidget* parent)
    : QFrame(parent),
      grid_(grid),
      prompt_(prompt),
      copy_(folder),
      left_(script::AbandonedCopies(folder)),
      text_(new StatusPanel) {
  setObjectName(QStringLiteral("UnsavedBar"));
  setBackgroundRole(QPalette::ToolTipBase);
  setForegroundRole(QPalette::ToolTipText);
  setAutoFillBackground(true);
  text_->setObjectName(QStringLiteral("UnsavedText"));
  text_->setTextFormat(Qt::PlainText);
  text_->setForegroundRole(QPalette::ToolTipText);
  auto* row = new FlowLayout(this, kOfferGap, kOfferGap);
  row->setContentsMargins(2 * kOfferGap, kOfferGap, kOfferGap, kOfferGap);
  row->addWidget(text_);
  row->addWidget(AddButton("cmdRestore", script::texts::kRestore, &UnsavedView::Restore));
  auto* discard = AddButton("cmdDiscard", script::texts::kDiscard, &UnsavedView::Discard);
  row->addWidget(discard);
  text_->setFixedHeight(discard->sizeHint().height());
  text_->setMinimumWidth(1);
  write_.setSingleShot(true);
  write_.setInterval(kWrittenAfterMs);
  connect(&write_, &QTimer::timeout, this, &UnsavedView::Keep);
  connect(grid_->model(), &QAbstractItemModel::dataChanged, this, &UnsavedView::NoteChange);
  connect(grid_, &script::CommandGrid::FileShownAgain, this, &UnsavedView::NoteChange);
  ShowNext();
}

QPushButton* UnsavedView::AddButton(const char* name, std::string_view text, void (UnsavedView::*command)()) {
  auto* button = new QPushButton(base::ToQt(text), this);
  button->setObjectName(QLatin1String(name));
  button->setAutoDefault(false);
  base::OnClick(button, [this, command] { prompt_.Guard([this, command] { (this->*command)(); }); });
  return button;
}

int UnsavedView::Keep() {
  write_.stop();
  return copy_.Update(grid_->list());
}

// A run changes the look of rows many times a second, but nothing that is saved.
void UnsavedView::NoteChange() {
  if (std::exchange(last_revision_, grid_->list().revision()) == grid_->list().revision()) return;
  if (!write_.isActive()) write_.start();
}

void UnsavedView::Restore() {
  grid_->FinishEdit();
  if (!left_.front().Restore(grid_->list())) return;
  grid_->setFocus();
  // The other window's copy is removed once this window has its own.
  if (copy_.Update(grid_->list()) == 0) left_.front().Remove();
  left_.erase(left_.begin());
  ShowNext();
}

void UnsavedView::Discard() {
  left_.front().Remove();
  left_.erase(left_.begin());
  ShowNext();
}

void UnsavedView::ShowNext() {
  // A hidden button could still be clicked.
  setDisabled(left_.empty());
  setHidden(left_.empty());
  if (left_.empty()) return;
  const script::AbandonedCopy& next = left_.front();
  text_->setText(base::ToQt(script::texts::AbandonedList(next.name(), base::DateTimeText(next.saved_at()),
                                                         next.size(), left_.size() - 1)));
  text_->setToolTip(text_->text());
  setAccessibleName(text_->text());
  Announce();
}

void UnsavedView::showEvent(QShowEvent* event) {
  QFrame::showEvent(event);
  Announce();
}

void UnsavedView::Announce() {
  QAccessibleEvent alert(this, QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

}  // namespace kolvane::window
