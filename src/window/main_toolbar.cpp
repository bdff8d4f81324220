#include "window/main_toolbar.h"

#include "window/images.h"
#include "window/text.h"

namespace kolvane::window {
namespace {

struct ButtonRow {
  const char* key;
  const char* icon;
  const char* tool_tip;
  bool enabled;
  bool ends_group;
};

constexpr ButtonRow kButtons[] = {
    {"TB_SAVETERMWIN", "save", "Save terminal window to file", true, false},
    {"TB_PRINT", "print", "Print terminal window", false, true},
    {"TB_PORTCONFIGURE", "configure-connection", "Verbindung konfigurieren", false, false},
    {"TB_CONNECT", "connect", "Verbindung aufbauen", true, false},
    {"TB_FLUSH", "flush", "Eingangspuffer flushen", true, true},
    {"TB_OPENLOG", "log-open", "Logdatei öffnen", false, false},
    {"TB_CLOSELOG", "log-close", "Logdatei schließen", false, false},
    {"TB_RECORDLOG", "log-record-off", "Log aktivieren", false, true},
    {"TB_INSPECT", "inspect", "Binärdaten analysieren", false, true},
    {"TB_HELP", "help", "Hilfe anzeigen", false, false},
};

}  // namespace

MainToolbar::MainToolbar(QWidget* parent) : QToolBar(parent) {
  setObjectName(QStringLiteral("Toolbar1"));
  setWindowTitle(QStringLiteral("Terminal"));
  setMovable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setIconSize(QSize(22, 22));
  for (const ButtonRow& row : kButtons) {
    AddButton(row.key, row.icon, row.tool_tip, row.enabled);
    if (row.ends_group) addSeparator();
  }
}

void MainToolbar::AddButton(const char* key, const char* icon, const char* tool_tip, bool enabled) {
  QAction* action = addAction(Icon(icon), ToQt(tool_tip));
  action->setObjectName(QLatin1String(key));
  action->setToolTip(ToQt(tool_tip));
  action->setProperty("Tag", QStringLiteral("0"));
  action->setEnabled(enabled);
  connect(action, &QAction::triggered, this, [this, action] { Q_EMIT ButtonClick(action->objectName()); });
}

QAction* MainToolbar::Button(const char* key) const { return findChild<QAction*>(QLatin1String(key)); }

void MainToolbar::ShowState(const char* key, int tag, int image, const QString& tool_tip) {
  QAction* action = Button(key);
  action->setProperty("Tag", QString::number(tag));
  action->setProperty("Image", image);
  action->setIcon(ImageIcon(image));
  action->setText(tool_tip);
  action->setToolTip(tool_tip);
}

}  // namespace kolvane::window
