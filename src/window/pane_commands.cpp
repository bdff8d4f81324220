#include "window/pane_commands.h"

#include <QInputDialog>

namespace kolvane::window {

PaneCommands::PaneCommands(Menus& menus, terminal::OutputPane* pane, QWidget* window)
    : QObject(window), menus_(menus), pane_(pane), window_(window) {
  using terminal::OutputPane;
  connect(pane, &OutputPane::popupRequested, this, &PaneCommands::OpenPopup);
  connect(menus.Item("mnuCopy"), &QAction::triggered, pane, &OutputPane::copy);
  connect(menus.Item("mnuCut"), &QAction::triggered, pane, &OutputPane::cut);
  connect(menus.Item("mnuPaste"), &QAction::triggered, pane, &OutputPane::paste);
  connect(menus.Item("mnuDelete"), &QAction::triggered, pane, &OutputPane::deleteSelection);
  connect(menus.Item("mnuSelectAll"), &QAction::triggered, pane, &OutputPane::selectAll);
  connect(menus.Item("mnuClearAll"), &QAction::triggered, this, &PaneCommands::ClearAll);
  connect(menus.Item("mnuInsertComment"), &QAction::triggered, this, &PaneCommands::InsertComment);
}

void PaneCommands::OpenPopup(const QPoint& where) {
  menus_.Item("mnuPaste")->setEnabled(true);
  menus_.popup->popup(where);
}

void PaneCommands::ClearAll() {
  pane_->clear();
  pane_->SetSelectionColor(terminal::kNoColor);
}

void PaneCommands::InsertComment() {
  const QString comment =
      QInputDialog::getText(window_, QStringLiteral("Kommentar einfügen"), QStringLiteral("Kommentar:"));
  if (!comment.isEmpty()) pane_->InsertComment(comment);
}

}  // namespace kolvane::window
