#include "window/extras_menu.h"

#include <QMenuBar>
#include <cstring>
#include <utility>

#include "base/ui/qt_text.h"

namespace kolvane::window {
namespace {

struct ItemRow {
  const char* name;
  const char* caption;
  const char* shortcut = nullptr;
  bool while_running = false;  // also enabled while a list runs, and carried out while the window waits
  bool ends_group = false;
};

constexpr ItemRow kItems[] = {
    {.name = "mnuFind", .caption = "&Suchen...", .shortcut = "Ctrl+F", .while_running = true},
    {.name = "mnuFindNext", .caption = "&Weitersuchen", .shortcut = "F3", .while_running = true},
    {.name = "mnuFindPrevious",
     .caption = "Zur&ücksuchen",
     .shortcut = "Shift+F3",
     .while_running = true,
     .ends_group = true},
    {.name = "mnuReadAnswer", .caption = "&Antwort lesen", .shortcut = "F7"},
    {.name = "mnuListen", .caption = "Mith&ören"},
    {.name = "mnuQueriesOnly", .caption = "&Nur auf Abfragen warten"},
    {.name = "mnuBlocks", .caption = "&Blockantworten (#) erkennen"},
    {.name = "mnuDeviceWords", .caption = "&DCL, RES und STP beachten"},
    {.name = "mnuReconnect", .caption = "Nach Abbruch neu &verbinden"},
    {.name = "mnuTimeStamps", .caption = "Zeitstempel anzei&gen", .while_running = true},
    {.name = "mnuLogTimeStamps", .caption = "Zeitstempel ins &Log"},
    {.name = "mnuUtf8", .caption = "Gerät spricht UT&F-8", .ends_group = true},
    {.name = "mnuValues", .caption = "M&esswerte...", .shortcut = "Ctrl+M", .ends_group = true},
    {.name = "mnuCheckList", .caption = "Befehlsliste &prüfen", .shortcut = "Ctrl+K"},
    {.name = "mnuBreakpoint", .caption = "&Haltepunkt", .shortcut = "F9"},
    {.name = "mnuPlayFromRow", .caption = "Ab dieser Zeile absp&ielen", .shortcut = "Ctrl+F5"},
    {.name = "mnuRunToRow", .caption = "Bis hie&rher abspielen", .shortcut = "Ctrl+F10"},
    {.name = "mnuDuplicateRow", .caption = "Zeile verd&oppeln", .shortcut = "Ctrl+D"},
    {.name = "mnuToggleComment", .caption = "Aus&kommentieren", .shortcut = "Ctrl+#"},
    {.name = "mnuMoveUp", .caption = "Na&ch oben", .shortcut = "Alt+Up"},
    {.name = "mnuMoveDown", .caption = "Nach &unten", .shortcut = "Alt+Down", .ends_group = true},
    {.name = "mnuPorts", .caption = "Schni&ttstellen zuordnen..."},
    {.name = "mnuCopyWithTimes", .caption = "&Mit Zeiten kopieren"},
    {.name = "mnuRecent", .caption = "&Zuletzt verwendet"},
};

// The item's row in the table, and whether SetAllowed has refused it.
constexpr char kRow[] = "row";
constexpr char kRefused[] = "refused";

int RowOf(const char* name) {
  int row = 0;
  while (std::strcmp(kItems[row].name, name) != 0) ++row;
  return row;
}

QAction* MakeItem(int row, QObject* parent) {
  auto* item = new QAction(base::ToQt(kItems[row].caption), parent);
  if (kItems[row].shortcut != nullptr) item->setShortcut(QKeySequence(QLatin1String(kItems[row].shortcut)));
  return item;
}

}  // namespace

ExtrasMenu::ExtrasMenu(QMainWindow* window, MessagePrompt& prompt)
    : QObject(window), menu_(window->menuBar()->addMenu(QStringLiteral("E&xtras"))), prompt_(prompt) {
  menu_->setObjectName(QStringLiteral("mnuExtras"));
  // On a low screen a second column would leave the screen.
  menu_->setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
}

QAction* ExtrasMenu::On(const char* name, std::function<void()> event) {
  const int row = RowOf(name);
  QAction* item = MakeItem(row, menu_);
  Insert(row, item);
  prompt_.OnTrigger(item, std::move(event),
                    kItems[row].while_running ? MessagePrompt::While::kAlways : MessagePrompt::While::kIdle);
  return item;
}

QAction* ExtrasMenu::OnToggle(const char* name, bool& flag, std::function<void()> changed) {
  auto* item = On(name, [this, name, &flag, changed = std::move(changed)] {
    flag = Item(name)->isChecked();
    changed();
  });
  item->setCheckable(true);
  item->setChecked(flag);
  return item;
}

QMenu* ExtrasMenu::AddMenu(const char* name) {
  const int row = RowOf(name);
  auto* menu = new QMenu(base::ToQt(kItems[row].caption), menu_);
  menu->setObjectName(QLatin1String(name));
  Insert(row, menu->menuAction());
  return menu;
}

QAction* ExtrasMenu::Item(const char* name) const {
  for (QAction* item : menu_->actions()) {
    if (!item->isSeparator() && item->property(kRow).toInt() == RowOf(name)) return item;
  }
  return nullptr;
}

void ExtrasMenu::SetAllowed(const char* name, bool allowed) {
  QAction* item = Item(name);
  item->setProperty(kRefused, !allowed);
  ShowEnabled(item);
}

void ExtrasMenu::Lock(bool locked) {
  locked_ = locked;
  for (QAction* item : menu_->actions()) {
    if (!item->isSeparator()) ShowEnabled(item);
  }
}

void ExtrasMenu::Insert(int row, QAction* item) {
  // A submenu's own action has no name; the menu has it.
  if (item->menu() == nullptr) item->setObjectName(QLatin1String(kItems[row].name));
  item->setProperty(kRow, row);
  QAction* before = nullptr;
  for (QAction* other : menu_->actions()) {
    if (other->property(kRow).toInt() > row) {
      before = other;
      break;
    }
  }
  menu_->insertAction(before, item);
  if (kItems[row].ends_group) menu_->insertSeparator(before)->setProperty(kRow, row);
}

void ExtrasMenu::ShowEnabled(QAction* item) const {
  const ItemRow& row = kItems[item->property(kRow).toInt()];
  item->setEnabled(!item->property(kRefused).toBool() && (!locked_ || row.while_running));
}

}  // namespace kolvane::window
