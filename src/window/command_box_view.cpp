#include "window/command_box_view.h"

#include <QLineEdit>

#include "base/ui/qt_text.h"

namespace kolvane::window {

void CommandBoxView::ShowHistory(const terminal::CommandHistory& history, terminal::HistoryChange change) {
  if (change.inserted) box_->insertItem(0, base::ToQt(history.entries().front()));
  if (change.dropped_last) box_->removeItem(box_->count() - 1);
  box_->setCurrentIndex(0);
  box_->lineEdit()->setText(box_->itemText(0));
  box_->lineEdit()->selectAll();
  box_->setFocus();
}

}  // namespace kolvane::window
