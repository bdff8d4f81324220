#include "script/ui/watch_panel.h"

#include "base/ui/qt_text.h"

namespace kolvane::script {
namespace {

constexpr int kWatchRows = 9;

QTreeWidgetItem* MakeItem(const WatchItem& from) {
  auto* item = new QTreeWidgetItem({base::ToQt(from.name), base::ToQt(from.value)});
  for (const WatchItem& child : from.children) item->addChild(MakeItem(child));
  return item;
}

}  // namespace

WatchPanel::WatchPanel(QWidget* parent) : InfoList(QStringLiteral("WatchPanel"), kWatchRows, parent) {
  setAccessibleName(QStringLiteral("Zustand des Ablaufs"));
  setToolTip(QStringLiteral("Zustand des angehaltenen Ablaufs; Esc schließt ihn"));
  setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Wert")});
}

void WatchPanel::Show(const std::vector<WatchItem>& items) {
  FitColumns({0});
  QStringList open;
  for (int i = 0; i < topLevelItemCount(); ++i) {
    if (topLevelItem(i)->isExpanded()) open << topLevelItem(i)->text(0);
  }
  clear();
  for (const WatchItem& from : items) {
    QTreeWidgetItem* item = MakeItem(from);
    addTopLevelItem(item);
    item->setExpanded(open.contains(item->text(0)));
  }
}

}  // namespace kolvane::script
