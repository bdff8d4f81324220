#include "script/ui/watch_panel.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace kolvane::script {
namespace {

constexpr int kVisibleRows = 9;

QTreeWidgetItem* MakeItem(const WatchItem& from) {
  auto* item = new QTreeWidgetItem({QString::fromStdString(from.name), QString::fromStdString(from.value)});
  for (const WatchItem& child : from.children) item->addChild(MakeItem(child));
  return item;
}

}  // namespace

WatchPanel::WatchPanel(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("WatchPanel"));
  setAccessibleName(QStringLiteral("Zustand des Ablaufs"));
  setToolTip(QStringLiteral("Zustand des angehaltenen Ablaufs; Esc schließt ihn"));
  setHeaderLabels({QStringLiteral("Name"), QStringLiteral("Wert")});
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  hide();
}

QSize WatchPanel::sizeHint() const {
  return {QTreeWidget::sizeHint().width(),
          header()->sizeHint().height() + kVisibleRows * (fontMetrics().height() + 4)};
}

void WatchPanel::Show(const std::vector<WatchItem>& items) {
  // Not before: a hidden header, too, measures its sections, in bold.
  header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
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

void WatchPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QTreeWidget::keyPressEvent(event);
  hide();
  Q_EMIT Closed();
}

}  // namespace kolvane::script
