#include "window/key_toolbar.h"

#include <QActionEvent>
#include <QKeyEvent>
#include <algorithm>

#include "window/images.h"
#include "window/text.h"

namespace kolvane::window {

KeyToolbar::KeyToolbar(const char* name, const char* title, std::span<const ButtonRow> buttons,
                       QWidget* parent)
    : QToolBar(parent) {
  setObjectName(QLatin1String(name));
  setWindowTitle(ToQt(title));
  setMovable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setIconSize(QSize(22, 22));
  for (const ButtonRow& row : buttons) {
    AddButton(row);
    if (row.ends_group) addSeparator();
  }
}

void KeyToolbar::AddButton(const ButtonRow& row) {
  QAction* action = addAction(QString());
  action->setObjectName(QLatin1String(row.key));
  action->setEnabled(row.enabled);
  ShowState(row.key, 0, ImageNumber(row.icon), ToQt(row.tool_tip));
}

QAction* KeyToolbar::Button(const char* key) const { return findChild<QAction*>(QLatin1String(key)); }

void KeyToolbar::ShowState(const char* key, int tag, int image, const QString& tool_tip) {
  QAction* action = Button(key);
  action->setProperty("Tag", QString::number(tag));
  action->setProperty("Image", image);
  action->setIcon(ImageIcon(image));
  action->setText(tool_tip);
  action->setToolTip(tool_tip);
}

QList<QToolButton*> KeyToolbar::Stops() const {
  QList<QToolButton*> stops;
  for (QToolButton* button : findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly)) {
    if (button->isEnabledTo(this) && button->isVisibleTo(this)) stops.append(button);
  }
  return stops;
}

void KeyToolbar::SetTabStop(QToolButton* button) {
  if (tab_stop_ != nullptr) tab_stop_->setFocusPolicy(Qt::NoFocus);
  tab_stop_ = button;
  if (tab_stop_ != nullptr) tab_stop_->setFocusPolicy(Qt::TabFocus);
}

void KeyToolbar::actionEvent(QActionEvent* event) {
  QToolBar::actionEvent(event);
  if (event->type() == QEvent::ActionAdded) {
    if (QWidget* button = widgetForAction(event->action())) button->installEventFilter(this);
  }
  // The bar hears of its actions before their buttons do.
  const QAction* stop = tab_stop_ != nullptr ? tab_stop_->defaultAction() : nullptr;
  if (stop != nullptr && stop->isEnabled()) return;
  const bool had_focus = stop != nullptr && window()->focusWidget() == tab_stop_;
  SetTabStop(EnabledFrom(stop));
  // A button that its own press disables does not send the keyboard elsewhere.
  if (had_focus && tab_stop_ != nullptr) tab_stop_->setFocus();
}

QToolButton* KeyToolbar::EnabledFrom(const QAction* start) const {
  QList<QAction*> all = actions();
  const auto first = std::ranges::find(all, start);
  if (first != all.end()) std::ranges::rotate(all, first);
  const auto enabled = std::ranges::find_if(
      all, [](const QAction* action) { return action->isEnabled() && !action->isSeparator(); });
  return enabled == all.end() ? nullptr : qobject_cast<QToolButton*>(widgetForAction(*enabled));
}

bool KeyToolbar::eventFilter(QObject* target, QEvent* event) {
  auto* button = qobject_cast<QToolButton*>(target);
  if (button == nullptr || event->type() != QEvent::KeyPress) return QToolBar::eventFilter(target, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Return || key == Qt::Key_Enter) return button->click(), true;
  return MoveByKey(button, key) || QToolBar::eventFilter(target, event);
}

bool KeyToolbar::MoveByKey(QToolButton* from, int key) {
  const QList<QToolButton*> stops = Stops();
  const qsizetype last = stops.size() - 1;
  qsizetype to = stops.indexOf(from);
  switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Up:
      to = std::max<qsizetype>(to - 1, 0);
      break;
    case Qt::Key_Right:
    case Qt::Key_Down:
      to = std::min(to + 1, last);
      break;
    case Qt::Key_Home:
      to = 0;
      break;
    case Qt::Key_End:
      to = last;
      break;
    default:
      return false;
  }
  SetTabStop(stops.value(to));
  stops.value(to)->setFocus(Qt::TabFocusReason);
  return true;
}

}  // namespace kolvane::window
