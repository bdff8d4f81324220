#include "help/ui/contents_tree.h"

#include <QTreeWidgetItemIterator>

#include "help/ui/help_texts.h"

namespace kolvane::help {
namespace {

constexpr int kPageRole = Qt::UserRole;
constexpr int kRowGap = 6;

}  // namespace

ContentsTree::ContentsTree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("HelpContents"));
  setAccessibleName(QString::fromUtf8(texts::kContents));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  const auto choose = [this](const QTreeWidgetItem* item) {
    if (const QString page = item->data(0, kPageRole).toString(); !page.isEmpty()) Q_EMIT PageChosen(page);
  };
  connect(this, &QTreeWidget::itemClicked, this, choose);
  connect(this, &QTreeWidget::itemActivated, this, choose);
}

void ContentsTree::ShowEntries(const std::vector<ContentsEntry>& entries) {
  clear();
  QList<QTreeWidgetItem*> path;  // the entry that was added last and those around it
  for (const ContentsEntry& entry : entries) {
    path.resize(std::min<qsizetype>(entry.level, path.size()));
    auto* item = path.isEmpty() ? new QTreeWidgetItem(this) : new QTreeWidgetItem(path.last());
    item->setText(0, QString::fromStdString(entry.title));
    item->setToolTip(0, item->text(0));
    item->setSizeHint(0, QSize(0, fontMetrics().height() + kRowGap));
    item->setData(0, kPageRole, QString::fromStdString(entry.page));
    path.append(item);
  }
}

void ContentsTree::Mark(const QString& page) {
  for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item) {
    if ((*item)->data(0, kPageRole).toString().compare(page, Qt::CaseInsensitive) != 0) continue;
    setCurrentItem(*item);
    return scrollToItem(*item);
  }
  setCurrentItem(nullptr);
}

}  // namespace kolvane::help
