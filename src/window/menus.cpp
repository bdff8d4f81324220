#include "window/menus.h"

#include <QMenuBar>
#include <span>

#include "base/ui/qt_text.h"
#include "window/icons.h"

namespace kolvane::window {
namespace {

struct MenuRow {
  const char* name;
  const char* caption;
  const char* icon = nullptr;
  const char* shortcut = nullptr;
  bool ends_group = false;
};

constexpr MenuRow kFile[] = {
    {.name = "mnuNewCommandFile", .caption = "&Neue Befehlsliste", .icon = "list-new", .shortcut = "Ctrl+N"},
    {.name = "mnuOpenCommandFile",
     .caption = "Befehlsliste ö&ffnen...",
     .icon = "list-open",
     .shortcut = "Ctrl+O"},
    {.name = "mnuSaveCommandFile",
     .caption = "Befehlsliste &speichern",
     .icon = "list-save",
     .shortcut = "Ctrl+S"},
    {.name = "mnuSaveCommandFileAs", .caption = "Befehlsliste speichern &als...", .ends_group = true},
    {.name = "mnuOpenLog", .caption = "&Logdatei öffnen...", .icon = "log-open"},
    {.name = "mnuCloseLog", .caption = "Logdatei s&chließen", .icon = "log-close", .ends_group = true},
    {.name = "mnuSaveTerminal", .caption = "&Terminalfenster speichern...", .icon = "save"},
    {.name = "mnuOpenTextFile", .caption = "Te&xtdatei laden...", .icon = "open-text"},
    {.name = "mnuPrintTermWindow",
     .caption = "Terminalfenster d&rucken",
     .icon = "print",
     .ends_group = true},
    {.name = "mnuExit", .caption = "Terminal &beenden", .icon = "exit", .shortcut = "Ctrl+Q"},
};

constexpr MenuRow kConnection[] = {
    {.name = "mnuConfigureConnection",
     .caption = "Verbindung &konfigurieren...",
     .icon = "configure-connection",
     .ends_group = true},
    {.name = "mnuConnect", .caption = "&Verbinden", .icon = "connect"},
    {.name = "mnuDisconnect", .caption = "Verbindung &trennen", .icon = "disconnect"},
};

constexpr MenuRow kOptions[] = {
    {.name = "mnuOption_0", .caption = "&Befehle anzeigen"},
    {.name = "mnuOption_1", .caption = "&Antwortzeiten anzeigen"},
    {.name = "mnuOption_2", .caption = "&Zeilenumbrüche in Antwort"},
};

constexpr MenuRow kPopup[] = {
    {.name = "mnuCopy", .caption = "&Kopieren", .icon = "copy"},
    {.name = "mnuCut", .caption = "&Ausschneiden", .icon = "cut"},
    {.name = "mnuPaste", .caption = "&Einfügen", .icon = "paste"},
    {.name = "mnuDelete", .caption = "&Löschen", .icon = "delete", .ends_group = true},
    {.name = "mnuSelectAll", .caption = "Alles &markieren", .icon = "select-all"},
    {.name = "mnuClearAll", .caption = "Alles l&öschen", .icon = "clear", .ends_group = true},
    {.name = "mnuSaveAs", .caption = "&Speichern", .icon = "save"},
    {.name = "mnuOpen", .caption = "Ö&ffnen...", .icon = "open-text"},
    {.name = "mnuPrint", .caption = "&Drucken", .icon = "print", .ends_group = true},
    {.name = "mnuBackColor", .caption = "&Hintergrundfarbe...", .icon = "color"},
    {.name = "mnuFont", .caption = "Sch&riftart...", .icon = "font", .ends_group = true},
    {.name = "mnuBinInspect", .caption = "&Binärdaten analysieren...", .icon = "inspect"},
    {.name = "mnuInsertComment", .caption = "Kommen&tar einfügen", .icon = "comment"},
};

QMenu* Fill(QMenu* menu, const char* name, std::span<const MenuRow> rows) {
  menu->setObjectName(QLatin1String(name));
  for (const MenuRow& row : rows) {
    QAction* item = menu->addAction(base::ToQt(row.caption));
    item->setObjectName(QLatin1String(row.name));
    if (row.icon != nullptr) item->setIcon(Icon(row.icon));
    if (row.shortcut != nullptr) item->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
    if (row.ends_group) menu->addSeparator();
  }
  return menu;
}

}  // namespace

Menus::Menus(QMainWindow* window)
    : file(Fill(window->menuBar()->addMenu(QStringLiteral("&Datei")), "mnuFile", kFile)),
      connection(Fill(window->menuBar()->addMenu(QStringLiteral("&Verbindung")), "mnuCon", kConnection)),
      options(Fill(window->menuBar()->addMenu(QStringLiteral("&Optionen")), "mnuOptions", kOptions)),
      popup(Fill(new QMenu(QStringLiteral("POP1"), window), "mnuPOP1", kPopup)) {
  for (QAction* option : options->actions()) option->setCheckable(true);
}

QAction* Menus::Item(const char* name) const {
  for (const QMenu* menu : {file, connection, options, popup}) {
    if (auto* item = menu->findChild<QAction*>(QLatin1String(name))) return item;
  }
  return nullptr;
}

PopupCommands::PopupCommands(Menus& menus, MessagePrompt& prompt, EditTarget& target, QObject* parent)
    : QObject(parent), menus_(menus), prompt_(prompt), target_(&target) {
  Connect("mnuCopy", &EditTarget::Copy);
  Connect("mnuCut", &EditTarget::Cut);
  Connect("mnuPaste", &EditTarget::Paste);
  Connect("mnuDelete", &EditTarget::Delete);
  Connect("mnuSelectAll", &EditTarget::SelectAll);
  Connect("mnuClearAll", &EditTarget::ClearAll);
  Connect("mnuOpen", &EditTarget::Open);
  Connect("mnuPrint", &EditTarget::Print);
  Connect("mnuFont", &EditTarget::ChooseFont);
  Connect("mnuBackColor", &EditTarget::ChooseBackColor);
}

void PopupCommands::Connect(const char* item, void (EditTarget::*command)()) {
  // These two change nothing.
  const bool reads = command == &EditTarget::Copy || command == &EditTarget::SelectAll;
  prompt_.OnTrigger(
      menus_.Item(item), [this, command] { (target_->*command)(); },
      reads ? MessagePrompt::While::kAlways : MessagePrompt::While::kIdle);
}

void PopupCommands::OpenPopup(EditTarget& target, const QPoint& where) {
  SetEditTarget(target);
  menus_.Item("mnuPaste")->setEnabled(true);
  menus_.popup->popup(where);
}

}  // namespace kolvane::window
