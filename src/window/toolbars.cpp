#include "window/toolbars.h"

#include <QActionEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QStyle>
#include <algorithm>

#include "base/ui/buttons.h"
#include "base/ui/fields.h"
#include "base/ui/qt_text.h"
#include "terminal/texts.h"
#include "window/icons.h"
#include "window/texts.h"

namespace kolvane::window {

KeyToolbar::KeyToolbar(const char* name, const char* title, std::span<const ButtonRow> buttons,
                       QWidget* parent)
    : QToolBar(parent) {
  setObjectName(QLatin1String(name));
  setWindowTitle(base::ToQt(title));
  setMovable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setIconSize(kToolbarImage);
  for (const ButtonRow& row : buttons) {
    AddButton(row);
    if (row.ends_group) addSeparator();
  }
  if (QToolButton* extension = base::LabelExtension(this)) extension->installEventFilter(this);
}

void KeyToolbar::AddButton(const ButtonRow& row) {
  QAction* action = addAction(QString());
  action->setObjectName(QLatin1String(row.key));
  ShowState(row.key, 0, ImageNumber(row.icon), base::ToQt(row.tool_tip));
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
  // The extension, the only button without an action, is the bar's first child but stands at its end.
  std::stable_partition(stops.begin(), stops.end(),
                        [](const QToolButton* stop) { return stop->defaultAction() != nullptr; });
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
  // The bar is notified of changed actions before their buttons are.
  const QAction* stop = tab_stop_ != nullptr ? tab_stop_->defaultAction() : nullptr;
  if (stop != nullptr && stop->isEnabled()) return;
  const bool had_focus = stop != nullptr && window()->focusWidget() == tab_stop_;
  SetTabStop(EnabledFrom(stop));
  // If a press disables its own button, the focus stays in the bar.
  if (had_focus && tab_stop_ != nullptr) tab_stop_->setFocus();
}

QToolButton* KeyToolbar::EnabledFrom(const QAction* start) const {
  QList<QAction*> all = actions();
  const auto first = std::ranges::find(all, start);
  if (first != all.end()) std::rotate(all.begin(), first, all.end());
  const auto enabled = std::ranges::find_if(all, [this](QAction* action) {
    if (!action->isEnabled() || action->isSeparator()) return false;
    return !isVisible() || widgetForAction(action)->isVisibleTo(this);
  });
  return enabled == all.end() ? nullptr : qobject_cast<QToolButton*>(widgetForAction(*enabled));
}

bool KeyToolbar::eventFilter(QObject* target, QEvent* event) {
  auto* button = qobject_cast<QToolButton*>(target);
  // A stop that no longer fits into the bar, or an extension that is no longer needed.
  if (button != nullptr && button == tab_stop_ && event->type() == QEvent::HideToParent)
    SetTabStop(EnabledFrom(button->defaultAction()));
  if (button == nullptr || event->type() != QEvent::KeyPress) return QToolBar::eventFilter(target, event);
  const auto& key = *static_cast<QKeyEvent*>(event);
  if (base::IsEnter(key)) {
    button->click();
    return true;
  }
  return MoveByKey(button, key.key()) || QToolBar::eventFilter(target, event);
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

namespace {

constexpr ButtonRow kMainButtons[] = {
    {.key = "TB_SAVETERMWIN", .icon = "save", .tool_tip = "Save terminal window to file"},
    {.key = "TB_PRINT", .icon = "print", .tool_tip = "Print terminal window", .ends_group = true},
    {.key = "TB_PORTCONFIGURE", .icon = "configure-connection", .tool_tip = texts::kConfigureTip},
    {.key = "TB_CONNECT", .icon = "connect", .tool_tip = terminal::texts::kConnectTip},
    {.key = "TB_FLUSH", .icon = "flush", .tool_tip = "Eingangspuffer flushen", .ends_group = true},
    {.key = "TB_OPENLOG", .icon = "log-open", .tool_tip = "Logdatei öffnen"},
    {.key = "TB_CLOSELOG", .icon = "log-close", .tool_tip = "Logdatei schließen"},
    {.key = "TB_RECORDLOG",
     .icon = "log-record-off",
     .tool_tip = terminal::texts::kStartRecordingTip,
     .ends_group = true},
    {.key = "TB_INSPECT", .icon = "inspect", .tool_tip = "Binärdaten analysieren", .ends_group = true},
    {.key = "TB_HELP", .icon = "help", .tool_tip = "Hilfe anzeigen"},
};

}  // namespace

MainToolbar::MainToolbar(QWidget* parent) : KeyToolbar("Toolbar1", "Terminal", kMainButtons, parent) {}

namespace {

constexpr ButtonRow kScriptButtons[] = {
    {.key = "TB_PLAY", .icon = "play", .tool_tip = "Befehlsliste abspielen (F5)"},
    {.key = "TB_SINGLESTEP", .icon = "single-step", .tool_tip = "Einzelschritt (F10)"},
    {.key = "TB_BREAK", .icon = "break", .tool_tip = "Nach der laufenden Zeile anhalten"},
    {.key = "TB_STOP", .icon = "stop", .tool_tip = "Befehlsliste beenden (Umschalt+F5)"},
    {.key = "TB_RECORD",
     .icon = "record-off",
     .tool_tip = "Gesendete Befehle aufzeichnen",
     .ends_group = true},
    {.key = "TB_NEWSCRIPT", .icon = "list-new", .tool_tip = "Neue Befehlsliste"},
    {.key = "TB_OPENSCRIPT", .icon = "list-open", .tool_tip = "Befehlsliste öffnen"},
    {.key = "TB_SAVESCRIPT", .icon = "list-save", .tool_tip = "Befehlsliste speichern"},
    {.key = "TB_PRINTSCRIPT", .icon = "list-print", .tool_tip = "Befehlsliste drucken", .ends_group = true},
    {.key = "TB_CUT", .icon = "cut", .tool_tip = "Ausschneiden"},
    {.key = "TB_COPY", .icon = "copy", .tool_tip = "Kopieren"},
    {.key = "TB_PASTE", .icon = "paste", .tool_tip = "Einfügen", .ends_group = true},
    {.key = "TB_SPECIALCOMMANDS", .icon = "special-commands", .tool_tip = "Hilfe zu den $-Befehlen"},
};

constexpr QSize kSmall(16, 16);
constexpr QSize kSmallestIcon(12, 12);
constexpr int kRunControls = 4;  // the first buttons

}  // namespace

ScriptToolbar::ScriptToolbar(QWidget* parent)
    : KeyToolbar("Toolbar3", "Befehlsliste", kScriptButtons, parent) {
  setOrientation(Qt::Vertical);
  Button("TB_PLAY")->setShortcut(Qt::Key_F5);
  Button("TB_STOP")->setShortcut(Qt::SHIFT | Qt::Key_F5);
  Button("TB_SINGLESTEP")->setShortcut(Qt::Key_F10);
  // The Pause key has another name while Ctrl is held.
  Button("TB_BREAK")->setShortcuts({Qt::Key_F6, Qt::CTRL | Qt::Key_Pause, Qt::CTRL | Qt::Key_Cancel});
  Button("TB_RECORD")->setShortcut(Qt::CTRL | Qt::Key_R);
  Button("TB_PRINTSCRIPT")->setShortcut(Qt::CTRL | Qt::Key_P);
  Button("TB_SPECIALCOMMANDS")->setShortcut(Qt::CTRL | Qt::Key_F1);
  Button("TB_RECORD")->setCheckable(true);
}

void ScriptToolbar::ShowRecording(int tag, int image) {
  ShowState("TB_RECORD", tag, image, Button("TB_RECORD")->toolTip());
  Button("TB_RECORD")->setChecked(tag == 1);
}

QList<QAction*> ScriptToolbar::RunControls() const { return actions().first(kRunControls); }

void ScriptToolbar::FitInto(int height) {
  if (iconSize() == kToolbarImage) whole_height_ = sizeHint().height();
  if (height >= whole_height_) return setIconSize(kToolbarImage);
  setIconSize(height >= RunControlHeight(kSmall) ? kSmall : kSmallestIcon);
}

int ScriptToolbar::SmallestHeight() const { return RunControlHeight(kSmallestIcon); }

int ScriptToolbar::RunControlHeight(QSize icons) const {
  const int padding = widgetForAction(Button("TB_STOP"))->sizeHint().height() - iconSize().height();
  const QMargins margins = layout()->contentsMargins();
  return kRunControls * (icons.height() + padding + layout()->spacing()) + margins.top() + margins.bottom() +
         style()->pixelMetric(QStyle::PM_ToolBarExtensionExtent, nullptr, this);
}

}  // namespace kolvane::window
