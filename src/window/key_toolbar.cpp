#include "window/key_toolbar.h"

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

}  // namespace kolvane::window
