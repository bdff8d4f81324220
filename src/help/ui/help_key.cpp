#include "help/ui/help_key.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>
#include <utility>

#include "base/ui/fields.h"
#include "base/ui/qt_text.h"
#include "help/topics.h"

namespace kolvane::help {
namespace {

// The active action of a widget that shows actions.
const QAction* ActiveAction(const QWidget* widget) {
  if (const auto* menu = qobject_cast<const QMenu*>(widget)) return menu->activeAction();
  if (const auto* bar = qobject_cast<const QMenuBar*>(widget)) return bar->activeAction();
  if (const auto* button = qobject_cast<const QToolButton*>(widget)) return button->defaultAction();
  return nullptr;
}

QString NameOf(const QAction* action) {
  if (action == nullptr) return {};
  const auto* menu = action->menu<QMenu*>();
  return action->objectName().isEmpty() && menu != nullptr ? menu->objectName() : action->objectName();
}

bool IsHelpKey(const QEvent* event) {
  if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) return false;
  const auto* key = static_cast<const QKeyEvent*>(event);
  return key->key() == Qt::Key_F1 && (key->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

void ClosePopups() {
  while (QWidget* popup = QApplication::activePopupWidget()) {
    if (!popup->close()) return;
  }
  // A menu bar used by keyboard returns the focus while its window is still the active one, or never.
  QWidget* focused = QApplication::focusWidget();
  if (qobject_cast<QMenuBar*>(focused) == nullptr) return;
  QKeyEvent leave(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(focused, &leave);
}

}  // namespace

HelpKey::HelpKey(QWidget* terminal, std::function<void(const HelpTarget&)> show)
    : terminal_(terminal), show_(std::move(show)) {
  QApplication::instance()->installEventFilter(this);
}

HelpTarget HelpKey::TargetOf(const QWidget* widget) {
  if (const auto* box = qobject_cast<const QMessageBox*>(widget->window())) {
    if (auto help_target = MessageTarget(base::FromQt(box->text()))) return *std::move(help_target);
  }
  std::vector<std::string> names = {base::FromQt(NameOf(ActiveAction(widget)))};
  for (const QObject* object = widget; object != nullptr; object = base::OwnerOf(object))
    names.push_back(base::FromQt(object->objectName()));
  return TargetOfNames(names);
}

bool HelpKey::IsOfTerminal(const QWidget* widget) const {
  const QObject* object = widget;
  while (object != nullptr && object != terminal_) object = base::OwnerOf(object);
  return object != nullptr;
}

bool HelpKey::eventFilter(QObject* target, QEvent* event) {
  if (!IsHelpKey(event)) return false;
  const auto* widget = qobject_cast<const QWidget*>(target);
  if (widget == nullptr || !IsOfTerminal(widget)) return false;
  if (event->type() == QEvent::ShortcutOverride) {
    // So that the key arrives, even if the host has made it a shortcut.
    event->accept();
    return true;
  }
  const HelpTarget help_target = TargetOf(widget);
  // An open menu or list would prevent use of the help window.
  ClosePopups();
  show_(help_target);
  return true;
}

void AddHelpButton(QDialog& dialog) {
  auto* buttons = dialog.findChild<QDialogButtonBox*>();
  if (buttons == nullptr) return;
  auto* help = buttons->addButton(QStringLiteral("&Hilfe"), QDialogButtonBox::HelpRole);
  help->setObjectName(QStringLiteral("HelpButton"));
  // A message box treats each of its buttons as an answer.
  help->disconnect();
  QObject::connect(help, &QPushButton::clicked, &dialog, [&dialog] {
    QKeyEvent key(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QApplication::sendEvent(&dialog, &key);
  });
}

}  // namespace kolvane::help
