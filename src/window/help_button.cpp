#include "window/help_button.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QPushButton>

namespace kolvane::window {

void AddHelpButton(QDialog& dialog) {
  auto* buttons = dialog.findChild<QDialogButtonBox*>();
  if (buttons == nullptr) return;
  auto* help = buttons->addButton(QStringLiteral("&Hilfe"), QDialogButtonBox::HelpRole);
  help->setObjectName(QStringLiteral("HelpButton"));
  // A message box takes each of its buttons for an answer.
  help->disconnect();
  QObject::connect(help, &QPushButton::clicked, &dialog, [&dialog] {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QApplication::sendEvent(&dialog, &key);
  });
}

}  // namespace kolvane::window
